#include "app/verification_summary.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/captured_output.h"

namespace sealkeeper {
namespace {

using test::CapturedOutput;

constexpr ResultCode kOk = ResultCode::Ok;
constexpr ResultCode kIo = ResultCode::FileVerificationIOError;
constexpr ResultCode kSize = ResultCode::FileVerificationSizeMismatch;
constexpr ResultCode kHash = ResultCode::FileVerificationHashMismatch;

VerificationSummary SummaryOf(const std::vector<ResultCode>& codes) {
    VerificationSummary summary;
    for (const ResultCode code : codes) {
        summary.Add(code);
    }
    return summary;
}

struct ResultCase {
    const char* name;
    std::vector<ResultCode> codes;
    ResultCode result;
};

TEST(VerificationSummary, TieBreakOfTheResult) {
    const std::vector<ResultCase> cases = {
        {"no files", {}, kOk},
        {"one good file", {kOk}, kOk},
        {"good files", {kOk, kOk}, kOk},
        {"one failure", {kHash}, kHash},
        {"the last file fails", {kSize, kOk, kHash}, kHash},
        {"the last file fails with the smallest code", {kHash, kSize}, kSize},
        {"the last file passes: the smallest code", {kSize, kHash, kOk}, kSize},
        {"the order before does not count", {kHash, kSize, kIo, kOk}, kIo},
        {"the number of failures does not count", {kHash, kHash, kSize, kOk}, kSize},
        {"one failure between good files", {kOk, kHash, kOk}, kHash},
    };
    for (const ResultCase& given : cases) {
        EXPECT_EQ(SummaryOf(given.codes).Result(), given.result) << given.name;
    }
}

std::string Printed(const VerificationSummary& summary) {
    CapturedOutput output;
    summary.Print();
    return output.Take();
}

TEST(VerificationSummary, PrintsTheCodesInAscendingOrder) {
    EXPECT_EQ(Printed(SummaryOf({kHash, kOk, kSize, kOk, kIo, kHash, kHash})),
              "[Info] Verification summary:\n"
              "[Info] =======================================\n"
              "[Info] Code 0 (Ok): 2 files.\n\n"
              "[Info] Code 23 (FileVerificationIOError): 1 files.\n\n"
              "[Info] Code 24 (FileVerificationSizeMismatch): 1 files.\n\n"
              "[Info] Code 26 (FileVerificationHashMismatch): 3 files.\n\n");
}

TEST(VerificationSummary, OfNoFilesHasNoCodes) {
    EXPECT_EQ(Printed({}),
              "[Info] Verification summary:\n"
              "[Info] =======================================\n");
}

}  // namespace
}  // namespace sealkeeper
