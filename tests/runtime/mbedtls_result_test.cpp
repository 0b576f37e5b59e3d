#include "runtime/mbedtls_result.h"

#include <gtest/gtest.h>

#include <map>
#include <vector>

namespace sealkeeper {
namespace {

// Numbers instead of the library's names, since the mapping of the numbers is promised.
const std::map<int, int>& KeyErrors() {
    static const std::map<int, int> codes = {
        {-0x3E00, 13}, {-0x3D80, 14}, {-0x3D00, 15}, {-0x3C00, 16},
        {-0x3B80, 16}, {-0x3B00, 17}, {-0x4380, 17}, {-0x3900, 18},
    };
    return codes;
}

const std::map<int, int>& X509Errors() {
    static const std::map<int, int> codes = {
        {0, 0},        {-0x2800, 20}, {-0x2780, 20}, {-0x2300, 20}, {-0x2280, 20}, {-0x2180, 20},
        {-0x2680, 21}, {-0x2600, 19}, {-0x2580, 19}, {-0x2200, 19}, {-0x2700, 22},
    };
    return codes;
}

constexpr int kGenericError = 11;
// Past every number in the library.
constexpr int kLowestNumber = -0x8000;

TEST(MbedTlsResult, EveryNegativeKeyError) {
    for (int error = kLowestNumber; error < 0; ++error) {
        const auto known = KeyErrors().find(error);
        const int expected = known == KeyErrors().end() ? kGenericError : known->second;
        ASSERT_EQ(ResultCodeNumber(MapKeyError(error)), expected) << error;
    }
}

TEST(MbedTlsResult, KeyResultsThatAreNoErrors) {
    for (const int result : {0, 1, 0x3E00, 2147483647}) {
        EXPECT_EQ(MapKeyError(result), ResultCode::Ok) << result;
    }
}

TEST(MbedTlsResult, EveryX509Error) {
    for (int error = kLowestNumber; error <= -kLowestNumber; ++error) {
        const auto known = X509Errors().find(error);
        const int expected = known == X509Errors().end() ? kGenericError : known->second;
        ASSERT_EQ(ResultCodeNumber(MapX509Error(error, 0)), expected) << error;
    }
}

TEST(MbedTlsResult, ComposedErrorsAreGeneric) {
    // An invalid format with an unexpected ASN.1 tag; a key of invalid format with the same.
    EXPECT_EQ(MapX509Error(-0x2180 - 0x0062, 0), ResultCode::MbedTlsGenericError);
    EXPECT_EQ(MapX509Error(-0x2700 - 0x0060, 0x01), ResultCode::MbedTlsGenericError);
    EXPECT_EQ(MapKeyError(-0x3D00 - 0x0062), ResultCode::MbedTlsGenericError);
}

TEST(MbedTlsResult, FlagsCountOnlyForAFailedVerification) {
    constexpr std::uint32_t kAllFlags = 0xFFFFFFFF;
    for (const auto& [error, code] : X509Errors()) {
        const int expected = error == -0x2700 ? 30 : code;
        EXPECT_EQ(ResultCodeNumber(MapX509Error(error, kAllFlags)), expected) << error;
    }
    EXPECT_EQ(MapX509Error(-1, kAllFlags), ResultCode::MbedTlsGenericError);
}

TEST(MbedTlsResult, FirstFlagWins) {
    struct Flag {
        std::uint32_t bit;
        int code;
    };
    const std::vector<Flag> inOrder = {{0x01, 30}, {0x02, 32}, {0x04, 31}, {0x10, 33}, {0x20, 34}};
    // Every combination of the low ten bits, with or without a code.
    for (std::uint32_t flags = 0; flags < 0x400; ++flags) {
        int expected = 22;
        for (auto flag = inOrder.rbegin(); flag != inOrder.rend(); ++flag) {
            expected = (flags & flag->bit) != 0 ? flag->code : expected;
        }
        EXPECT_EQ(ResultCodeNumber(MapX509Error(-0x2700, flags)), expected) << flags;
    }
    EXPECT_EQ(ResultCodeNumber(MapX509Error(-0x2700, 0xFFFFFFC8)), 22);
}

}  // namespace
}  // namespace sealkeeper
