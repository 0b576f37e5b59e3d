// Feeds any bytes as an entry block: the first four are the entry count, the rest goes into a
// catalogue that is otherwise valid.
#include <utility>

#include "catalogue/hash_catalogue.h"
#include "entry_block_file.h"
#include "fuzzer.h"
#include "platform/little_endian.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace sealkeeper;
    const fuzz::ByteView input(data, size);
    fuzz::Bytes file = fuzz::FileOfEntryBlock(input);
    if (file.empty()) {
        return 0;
    }
    HashCatalogue catalogue("");
    EntryList entries;
    const ResultCode code = catalogue.ReadCatalogue(std::move(file), entries);
    if (code == ResultCode::Ok) {
        fuzz::Require(entries.size() == LoadLittleEndian<std::uint32_t>(input));
    } else {
        fuzz::Require(code == ResultCode::FileInvalid && entries.empty());
    }
    return 0;
}
