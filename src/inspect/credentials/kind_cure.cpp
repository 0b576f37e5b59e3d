#include "inspect/credentials/kind_cure.h"

#include <algorithm>

#include "inspect/credentials/shell_word.h"

namespace sealkeeper {

std::optional<Cure> FindCure(std::span<const KindCure> cures, FileKind kind,
                             const std::string& path, const std::string& newPath) {
    const auto found = std::find_if(cures.begin(), cures.end(),
                                    [kind](const KindCure& cure) { return cure.kind == kind; });
    if (found == cures.end()) {
        return std::nullopt;
    }
    return Cure{found->text, ShellCommand(found->command, path, newPath)};
}

}  // namespace sealkeeper
