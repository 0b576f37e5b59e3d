#include "inspect/show/revocation_facts.h"

#include <string>

#include "inspect/x509/certificate_details.h"
#include "inspect/x509/file_kind.h"
#include "runtime/certificate_trust.h"

namespace sealkeeper {
namespace {

// What the block is if it is no list that the library can read.
std::string RemarkOn(FileKind kind) {
    constexpr const char* kNoList = "no revocation list in DER form";
    switch (kind) {
        case FileKind::Unknown:
            return kNoList;
        case FileKind::UnreadableSigned:
        case FileKind::CutOffDer:
            return FileKindText(kind);
        default:
            return std::string(kNoList) + ", but " + FileKindText(kind);
    }
}

}  // namespace

RevocationFacts RevocationFactsOf(std::span<const std::uint8_t> block) {
    RevocationFacts facts;
    facts.lengthBytes = block.size();
    if (block.empty()) {
        return facts;
    }
    RevocationList list;
    if (ParseRevocationList(block, list) != 0) {
        facts.remark = RemarkOn(FileKindOf(block));
        return facts;
    }
    const ListDetails details = DetailsOfList(*list.Get());
    facts.isList = true;
    facts.issuer = details.issuer;
    facts.thisUpdate = IsoTimeText(details.thisUpdate);
    facts.nextUpdate = details.nextUpdate ? IsoTimeText(*details.nextUpdate) : "";
    facts.revoked = details.revoked.size();
    return facts;
}

}  // namespace sealkeeper
