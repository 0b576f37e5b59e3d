// Any bytes as an entry block: the first four are the entry count, the rest is compressed and put
// into a catalogue that is sound otherwise. What was compressed must also come back as it was.
#include <algorithm>
#include <span>
#include <vector>

#include "catalogue/catalogue_format.h"
#include "catalogue/hash_catalogue.h"
#include "catalogue/lzw/lzw_compressor.h"
#include "catalogue/lzw/lzw_decompressor.h"
#include "fuzzer.h"
#include "platform/little_endian.h"

namespace {

using Bytes = std::vector<std::uint8_t>;
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
    Bytes compressed;
    LzwCompressor compressor(compressed);
    // How the block is cut makes no difference.
    const std::size_t cut = input[0] % block.size();
    compressor.Append(block.first(cut));
    compressor.Append(block.subspan(cut));
    compressor.Finish();
    auto opened = LzwDecompressor::Open(compressed);
    fuzz::Require(opened && opened->BytesLeft() == block.size());
    Bytes decompressed(block.size());
    fuzz::Require(opened->Read(decompressed));
    fuzz::Require(std::equal(decompressed.begin(), decompressed.end(), block.begin(), block.end()));

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
