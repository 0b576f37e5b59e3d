#include "entry_block_file.h"

#include <algorithm>

#include "catalogue/catalogue_format.h"
#include "catalogue/lzw/lzw_test_support.h"
#include "platform/little_endian.h"

namespace sealkeeper::fuzz {
namespace {

namespace header = catalogue_header;

Bytes FileOf(ByteView entryCount, const Bytes& compressed) {
    Bytes file(header::kSizeBytes + compressed.size());
    const std::span<std::uint8_t> bytes(file);
    std::copy(signed_file::kMagic.begin(), signed_file::kMagic.end(),
              file.begin() + header::kMagicOffset);
    StoreLittleEndian(header::kFormatVersion, bytes.subspan(header::kFormatVersionOffset));
    StoreLittleEndian(static_cast<std::uint32_t>(compressed.size()),
                      bytes.subspan(header::kCompressedLengthOffset));
    std::copy(entryCount.begin(), entryCount.end(), file.begin() + header::kEntryCountOffset);
    std::copy(compressed.begin(), compressed.end(), file.begin() + header::kSizeBytes);
    return file;
}

}  // namespace

Bytes FileOfEntryBlock(ByteView input) {
    if (input.size() <= sizeof(std::uint32_t)) {
        return {};
    }
    const ByteView block = input.subspan(sizeof(std::uint32_t));
    return FileOf(input.first(sizeof(std::uint32_t)),
                  test::PackedCodes({block.begin(), block.end()}));
}

}  // namespace sealkeeper::fuzz
