// Parses catalogues from bytes, and builds one.
#ifndef SEALKEEPER_TESTS_CATALOGUE_PARSED_CATALOGUE_SUPPORT_H
#define SEALKEEPER_TESTS_CATALOGUE_PARSED_CATALOGUE_SUPPORT_H

#include <gtest/gtest.h>

#include <cstdint>
#include <utility>
#include <vector>

#include "catalogue/catalogue_reader.h"
#include "catalogue/stored_catalogue_support.h"
#include "support/captured_output.h"

namespace sealkeeper::test {

struct Parsed {
    ResultCode code = ResultCode::Ok;
    Bytes crlBlock;
    EntryList entries;
};

// Reads header and body without checking the signature.
inline ResultCode ReadSteps(CatalogueFile& file, Parsed& parsed) {
    if (const ResultCode code = ReadCatalogueHeader(file.bytes, file.bytes.size(), file.header);
        code != ResultCode::Ok) {
        // The body is not read, so there are no entries.
        parsed.entries.clear();
        return code;
    }
    const auto crlBlock = CrlBlockOf(file);
    parsed.crlBlock.assign(crlBlock.begin(), crlBlock.end());
    return ReadCatalogueBody(file, parsed.entries);
}

// Also checks that nothing is printed, and that no entries remain after a failure.
[[nodiscard]] inline Parsed Parse(Bytes fileBytes) {
    Parsed parsed;
    // Must be replaced.
    parsed.entries = {test::EntryOf(RecordOf(0, u"old", {}))};
    CatalogueFile file{std::move(fileBytes), {}};
    CapturedOutput output;
    parsed.code = ReadSteps(file, parsed);
    EXPECT_EQ(output.Take(), "");
    if (parsed.code != ResultCode::Ok) {
        EXPECT_TRUE(parsed.entries.empty());
    }
    return parsed;
}

[[nodiscard]] inline Bytes Joined(const std::vector<Bytes>& parts) {
    Bytes joined;
    for (const Bytes& part : parts) {
        joined.insert(joined.end(), part.begin(), part.end());
    }
    return joined;
}

// Three records, with two digests, none and one.
[[nodiscard]] inline Bytes ThreeRecords() {
    return Joined({RecordOf(0, u"b", {DigestOf("1"), DigestOf("2")}), RecordOf(0, u"dir/none", {}),
                   RecordOfFile(u"a", "hello")});
}

}  // namespace sealkeeper::test

#endif
