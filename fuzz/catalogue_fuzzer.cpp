// Feeds any bytes as a catalogue file.
#include <algorithm>
#include <vector>

#include "catalogue/hash_catalogue.h"
#include "fuzzer.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace sealkeeper;
    HashCatalogue catalogue("");
    EntryList entries;
    const ResultCode code = catalogue.ReadCatalogue({data, data + size}, entries);
    fuzz::Require(code == ResultCode::Ok || entries.empty());
    fuzz::Require(code == ResultCode::Ok || code == ResultCode::FileInvalid);
    for (const auto& entry : entries) {
        static_cast<void>(entry->Path());
        for (std::uint32_t i = 0; i < entry->DigestCount(); ++i) {
            // Touches every byte of the digest.
            Sha256Digest digest{};
            const auto stored = entry->Digest(i);
            std::copy(stored.begin(), stored.end(), digest.begin());
        }
    }
    return 0;
}
