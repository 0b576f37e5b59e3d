#include "inspect/show/entry_oddities.h"

#include <string_view>

#include "catalogue/hashing/chunks.h"
#include "inspect/report/number_text.h"
#include "inspect/tree/lexical_path.h"
#include "inspect/tree/parent_component.h"

namespace sealkeeper {
namespace {

void AddOdditiesOfPath(const StoredPath& path, std::vector<std::string>& oddities) {
    switch (path.form) {
        case StoredPath::Form::Plain:
            break;
        case StoredPath::Form::Aliased:
            oddities.push_back("looks aliased: list and verify see '" + path.seen +
                               "', and verify fails where there is no such file");
            break;
        case StoredPath::Form::BytesPastEnd:
            oddities.emplace_back("has other bytes than zeros past the end of its path");
            break;
    }
    if (path.hasLoneSurrogate) {
        oddities.emplace_back(
            "is no UTF-16: a surrogate has no partner, so that verify looks for no such file");
    }
    if (path.fillsField) {
        oddities.emplace_back("fills the field of its path, which leaves no zero to end it");
    }
    if (path.spelt.empty()) {
        oddities.emplace_back("has an empty path");
    }
    if (path.spelt.starts_with('/') || LeavesGame(LexicalPath(path.spelt))) {
        oddities.emplace_back("leads out of the game directory");
    } else if (HasParentComponent(path.spelt)) {
        oddities.emplace_back("has '..' in its path, which generate stores where a pattern has it");
    }
    if (path.spelt.find('\\') != std::string::npos && !path.hasLoneSurrogate) {
        oddities.emplace_back("has a backslash, where generate stores a slash");
    }
}

}  // namespace

std::vector<std::string> OdditiesOf(const RecordStart& record, const StoredPath& path) {
    std::vector<std::string> oddities;
    AddOdditiesOfPath(path, oddities);
    if (const std::uint64_t chunks = ChunkCountOf(record.FileSizeBytes());
        record.DigestCount() != chunks) {
        oddities.push_back("has " + CountText(record.DigestCount(), "digest") +
                           "; a file of its size has " + CountText(chunks, "chunk"));
    }
    if (record.NamePosition() != path.namePosition) {
        oddities.push_back("tells that its name begins at unit " +
                           GroupedNumber(record.NamePosition()) + ", where it begins at " +
                           GroupedNumber(path.namePosition));
    }
    return oddities;
}

}  // namespace sealkeeper
