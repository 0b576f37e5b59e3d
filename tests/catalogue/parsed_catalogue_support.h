// Catalogues parsed from bytes, and the bytes of one.
#ifndef SEALKEEPER_TESTS_CATALOGUE_PARSED_CATALOGUE_SUPPORT_H
#define SEALKEEPER_TESTS_CATALOGUE_PARSED_CATALOGUE_SUPPORT_H

#include <gtest/gtest.h>

#include <cstdint>
#include <span>
#include <utility>
#include <vector>

#include "catalogue/catalogue_reader.h"
#include "catalogue/stored_catalogue_support.h"
#include "support/captured_output.h"

namespace sealkeeper::test {

inline const SignatureCheck kUnchecked = [](std::span<std::uint8_t>) { return ResultCode::Ok; };

struct Parsed {
    ResultCode code = ResultCode::Ok;
    Bytes crlBlock;
    EntryList entries;
};

// Also checks that nothing is printed, and that a failure leaves no entries.
[[nodiscard]] inline Parsed Parse(Bytes file, const SignatureCheck& check = kUnchecked) {
    Parsed parsed;
    // What was there goes.
    const Bytes old = {9, 9};
    ParsedCatalogue catalogue{old, {test::EntryOf(RecordOf(0, u"old", {}))}};
    CapturedOutput output;
    parsed.code = ParseCatalogueImage(file, check, catalogue);
    EXPECT_EQ(output.Take(), "");
    parsed.crlBlock.assign(catalogue.crlBlock.begin(), catalogue.crlBlock.end());
    parsed.entries = std::move(catalogue.entries);
    if (parsed.code != ResultCode::Ok) {
        EXPECT_TRUE(parsed.entries.empty());
        EXPECT_TRUE(parsed.crlBlock.empty());
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

// Three records, of two digests, of none, and of one.
[[nodiscard]] inline Bytes ThreeRecords() {
    return Joined({RecordOf(0, u"b", {DigestOf("1"), DigestOf("2")}), RecordOf(0, u"dir/none", {}),
                   RecordOfFile(u"a", "hello")});
}

}  // namespace sealkeeper::test

#endif
