// Any bytes as an entry block: the first four are the entry count, the rest is put into a catalogue
// that is sound otherwise. Each byte gets a code of its own: a search for longer strings would take
// most of the time and say nothing of the block.
#include <algorithm>
#include <span>
#include <vector>

#include "catalogue/catalogue_format.h"
#include "catalogue/hash_catalogue.h"
#include "catalogue/lzw/lzw_test_support.h"
#include "fuzzer.h"
#include "platform/little_endian.h"

namespace {

using sealkeeper::fuzz::Bytes;
namespace header = sealkeeper::catalogue_header;

Bytes CatalogueOf(std::span<const std::uint8_t> entryCount, const Bytes& compressed) {
    Bytes file(header::kSizeBytes + compressed.size());
    const std::span<std::uint8_t> bytes(file);
    std::copy(sealkeeper::signed_file::kMagic.begin(), sealkeeper::signed_file::kMagic.end(),
              file.begin() + header::kMagicOffset);
    sealkeeper::StoreLittleEndian(header::kFormatVersion,
                                  bytes.subspan(header::kFormatVersionOffset));
    sealkeeper::StoreLittleEndian(static_cast<std::uint32_t>(compressed.size()),
                                  bytes.subspan(header::kCompressedLengthOffset));
    std::copy(entryCount.begin(), entryCount.end(), file.begin() + header::kEntryCountOffset);
    std::copy(compressed.begin(), compressed.end(), file.begin() + header::kSizeBytes);
    return file;
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace sealkeeper;
    const std::span<const std::uint8_t> input(data, size);
    if (input.size() <= sizeof(std::uint32_t)) {
        return 0;
    }
    const auto block = input.subspan(sizeof(std::uint32_t));
    const Bytes compressed = test::PackedCodes({block.begin(), block.end()});
    HashCatalogue catalogue("");
    EntryList entries;
    const auto entryCount = input.first(sizeof(std::uint32_t));
    const ResultCode code = catalogue.ReadCatalogue(CatalogueOf(entryCount, compressed), entries);
    if (code == ResultCode::Ok) {
        fuzz::Require(entries.size() == LoadLittleEndian<std::uint32_t>(entryCount));
    } else {
        fuzz::Require(code == ResultCode::FileInvalid && entries.empty());
    }
    return 0;
}
