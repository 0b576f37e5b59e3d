// Changes one file of a small sealed game and runs `verify` on it. The status must be 0 if the file
// is unchanged, and only if every sealed byte is unchanged.
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <string>
#include <vector>

#include "app/console_log.h"
#include "app/verify_action.h"
#include "catalogue/catalogue_format.h"
#include "fuzzer.h"
#include "platform/little_endian.h"
#include "runtime/runtime_configuration_format.h"
#include "runtime/scramble.h"
#include "scratch_directory.h"
#include "signed_der.h"

namespace {

using namespace sealkeeper;
using fuzz::Bytes;
using fuzz::ByteView;
using fuzz::Require;

struct SealedFile {
    std::string name;
    // Whether `changed` differs from `content` only in bytes that are not sealed.
    bool (*isAsSealed)(const Bytes& content, const Bytes& changed);
    Bytes content;
};

bool IsEqual(const Bytes& content, const Bytes& changed) {
    return content == changed;
}

// The rest of the signature area after the signature is not sealed. The signature itself counts,
// because only one is valid for given bytes.
bool IsEqualExceptAfterSignature(Bytes content, const Bytes& changed, std::size_t areaOffset) {
    if (content.size() != changed.size()) {
        return false;
    }
    const std::size_t areaEnd = areaOffset + signed_file::kSignatureAreaBytes;
    const auto length = LoadLittleEndian<std::uint32_t>(std::span(content).subspan(areaEnd));
    const auto at = [](auto start, std::size_t offset) {
        return start + static_cast<std::ptrdiff_t>(offset);
    };
    std::copy(at(changed.begin(), areaOffset + length), at(changed.begin(), areaEnd),
              at(content.begin(), areaOffset + length));
    return content == changed;
}

bool IsCatalogueAsSealed(const Bytes& content, const Bytes& changed) {
    return IsEqualExceptAfterSignature(content, changed, catalogue_header::kSignatureOffset);
}

bool IsRuntimeConfigurationAsSealed(const Bytes& content, const Bytes& changed) {
    Bytes plain = content;
    Bytes plainChanged = changed;
    Unscramble(plain);
    Unscramble(plainChanged);
    return IsEqualExceptAfterSignature(plain, plainChanged, runtime_file::kSignatureOffset);
}

// In a certificate, the signature and what it covers are sealed, but not the encoding of the
// lengths around them, and nothing past its end.
bool IsCertificateAsSealed(const Bytes& content, const Bytes& changed) {
    const auto isSame = [](ByteView a, ByteView b) {
        return std::equal(a.begin(), a.end(), b.begin(), b.end());
    };
    const auto sealed = fuzz::TakeApart(content);
    const auto found = fuzz::TakeApart(changed);
    return found && isSame(sealed->toBeSigned, found->toBeSigned) &&
           isSame(sealed->signature, found->signature);
}

constexpr const char* kRuntimeConfiguration = "Quorvane/Certificates/runtime.conf";

std::vector<SealedFile> ReadSealedFiles() {
    std::vector<SealedFile> files = {
        {"Quorvane/Certificates/base.bin", IsCatalogueAsSealed, {}},
        {"Quorvane/Certificates/base.cer", IsCertificateAsSealed, {}},
        {kRuntimeConfiguration, IsRuntimeConfigurationAsSealed, {}},
        {"game", IsEqual, {}},
        {"data/level.pak", IsEqual, {}},
        {"data/empty", IsEqual, {}},
    };
    for (SealedFile& file : files) {
        file.content = fuzz::ContentOf(std::string(SEALKEEPER_FUZZ_GAME_DIR) + "/" + file.name);
    }
    return files;
}

// The game, in its own directory.
class InstalledGame {
  public:
    InstalledGame() {
        for (const SealedFile& file : files_) {
            Restore(file);
        }
        // Otherwise no later run could ever pass.
        Require(Verify() == ResultCode::Ok);
    }

    [[nodiscard]] const std::vector<SealedFile>& Files() const { return files_; }

    void Change(const SealedFile& file, const Bytes& content) const {
        directory_.Write(file.name, content);
    }
    void Remove(const SealedFile& file) const {
        Require(unlink((directory_.Path() + file.name).c_str()) == 0);
    }
    void Restore(const SealedFile& file) const { directory_.Write(file.name, file.content); }

    // Changes back afterwards: the action changes into the game's directory, and paths given to
    // libFuzzer may be relative.
    [[nodiscard]] ResultCode Verify() const {
        CommandLineOptions options;
        options.verifyDir = directory_.Path();
        options.productId = "FuzzedGame";
        const ResultCode code = RunVerifyAction(options);
        Require(fchdir(startDirectory_) == 0);
        return code;
    }

  private:
    // Open as long as the process runs.
    int startDirectory_ = open(".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    fuzz::ScratchDirectory directory_;
    std::vector<SealedFile> files_ = ReadSealedFiles();
};

const InstalledGame& Game() {
    static const InstalledGame game;
    return game;
}

// Takes a two-byte number from `input` and reduces it to below `end`.
std::size_t TakePosition(ByteView& input, std::size_t end) {
    const std::size_t low = fuzz::TakeByte(input);
    return (low | std::size_t{fuzz::TakeByte(input)} << 8) % end;
}

// `content` with other bytes at some positions, some of which may be equal to the old ones.
Bytes Edited(Bytes content, ByteView edits) {
    while (!edits.empty() && !content.empty()) {
        const std::size_t position = TakePosition(edits, content.size());
        content[position] = fuzz::TakeByte(edits);
    }
    return content;
}

// `content` cut at any position and continued with other bytes, possibly none.
Bytes Continued(Bytes content, ByteView input) {
    content.resize(TakePosition(input, content.size() + 1));
    content.insert(content.end(), input.begin(), input.end());
    return content;
}

void CheckChanged(const SealedFile& file, const Bytes& content) {
    Game().Change(file, content);
    const ResultCode code = Game().Verify();
    Game().Restore(file);
    Require(code != ResultCode::Ok || file.isAsSealed(file.content, content));
    Require(code == ResultCode::Ok || content != file.content);
}

// The only file that may be missing is runtime.conf.
void CheckRemoved(const SealedFile& file) {
    Game().Remove(file);
    const ResultCode code = Game().Verify();
    Game().Restore(file);
    Require((code == ResultCode::Ok) == (file.name == kRuntimeConfiguration));
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::SilenceConsole();
    g_logThreshold = LogLevel{0};
    ByteView input(data, size);
    const std::size_t index = fuzz::TakeByte(input) % Game().Files().size();
    const SealedFile& file = Game().Files()[index];
    switch (fuzz::TakeByte(input)) {
        case 'e':
            CheckChanged(file, Edited(file.content, input));
            break;
        case 'c':
            CheckChanged(file, Continued(file.content, input));
            break;
        case 'w':
            CheckChanged(file, Bytes(input.begin(), input.end()));
            break;
        case 'r':
            CheckRemoved(file);
            break;
        default:
            break;
    }
    return 0;
}
