#include "inspect/show/catalogue_facts.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>

#include "catalogue/catalogue_format.h"
#include "inspect/report/capped_sum.h"
#include "inspect/report/number_text.h"
#include "inspect/show/catalogue_fields.h"
#include "inspect/show/entry_oddities.h"
#include "inspect/show/entry_walk.h"
#include "inspect/show/revocation_facts.h"
#include "inspect/show/signature_facts.h"
#include "platform/little_endian.h"

namespace sealkeeper {
namespace {

namespace header = catalogue_header;

void Count(const WalkedEntry& entry, EntryTotals& totals) {
    const std::uint64_t sizeBytes = entry.record.FileSizeBytes();
    const std::uint64_t chunks = entry.record.DigestCount();
    ++totals.entries;
    totals.fileBytes = CappedSum(totals.fileBytes, sizeBytes);
    totals.chunks += chunks;
    if (!OdditiesOf(entry.record, entry.path).empty()) {
        ++totals.oddEntries;
    }
    totals.largestFileBytes = std::max(totals.largestFileBytes, sizeBytes);
    totals.largestChunkCount = std::max(totals.largestChunkCount, chunks);
}

void AddNotesOnSignature(std::span<const std::uint8_t> bytes, std::vector<std::string>& notes) {
    const auto layout =
        LoadLittleEndian<std::uint16_t>(bytes.subspan(header::kSignatureLayoutOffset));
    if (layout != header::kSignatureLayout) {
        notes.push_back("signature layout " + std::to_string(layout) +
                        " is an older one: nothing before offset " +
                        GroupedNumber(header::kCrlLengthOffset) + " is signed");
    }
    const auto length =
        LoadLittleEndian<std::uint32_t>(bytes.subspan(header::kSignatureLengthOffset));
    const auto area = bytes.subspan(header::kSignatureOffset, signed_file::kSignatureAreaBytes);
    const auto rest = area.subspan(std::min<std::size_t>(length, area.size()));
    if (std::any_of(rest.begin(), rest.end(), [](std::uint8_t byte) { return byte != 0; })) {
        notes.emplace_back("the signature area has other bytes than zeros after the signature");
    }
}

// Call after the walk: `bytesLeft` is what it left over.
void AddNotesOnBlock(std::uint64_t rawLength, std::uint64_t blockBytes, std::uint64_t bytesLeft,
                     std::vector<std::string>& notes) {
    if (rawLength != blockBytes) {
        notes.push_back("raw_length is " + GroupedNumber(rawLength) + ", and the entry block has " +
                        CountText(blockBytes, "byte") + "; no reader checks it");
    }
    if (bytesLeft > 0) {
        notes.push_back("the entry block has " + CountText(bytesLeft, "byte") +
                        " after its last record, which no reader looks at");
    }
}

}  // namespace

std::optional<InvalidReason> AddCatalogueFacts(CatalogueFile& file,
                                               const std::optional<std::string>& productId,
                                               ShownFile& shown) {
    shown.fields = CatalogueFieldsOf(std::span(file.bytes).first(header::kSizeBytes));
    shown.revocationList = RevocationFactsOf(CrlBlockOf(file));
    AddNotesOnSignature(file.bytes, shown.notes);
    // Must come after the fields are read, since it clears the signature.
    shown.signature = CheckCatalogueSignature(shown.path, file, productId);
    InvalidReason reason;
    auto walk = EntryWalk::Begin(file, &reason);
    if (!walk) {
        return reason;
    }
    const std::uint64_t blockBytes = walk->BytesLeft();
    EntryTotals totals;
    WalkedEntry entry;
    while (walk->Next(entry)) {
        Count(entry, totals);
    }
    if (!walk->HasEnded()) {
        return reason;
    }
    shown.totals = totals;
    const auto rawLength =
        LoadLittleEndian<std::uint32_t>(std::span(file.bytes).subspan(header::kRawLengthOffset));
    AddNotesOnBlock(rawLength, blockBytes, walk->BytesLeft(), shown.notes);
    return std::nullopt;
}

}  // namespace sealkeeper
