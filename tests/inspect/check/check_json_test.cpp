#include "inspect/check/check_json.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "inspect/check/check_report_support.h"

namespace sealkeeper {
namespace {

using nlohmann::json;

json JsonOf(const CheckReport& report, bool isStrict = false) {
    return json::parse(CheckJson(report, isStrict));
}

TEST(CheckJson, HasEveryFile) {
    const json expected = json::parse(R"({
        "gameDirectory": "/game/", "productId": "TestProduct42", "isStrict": false, "status": 24,
        "verification": {"code": 24, "result": "FileVerificationSizeMismatch", "isComplete": true},
        "catalogues": [{"name": "base.bin", "files": 2, "code": 0, "result": "Ok"}],
        "files": [
            {"path": "a", "catalogue": "base.bin", "bytes": 1, "code": 0, "result": "Ok",
             "isAliased": false},
            {"path": "data/b", "catalogue": "base.bin", "bytes": 20, "code": 24,
             "result": "FileVerificationSizeMismatch", "isAliased": false}],
        "summary": [{"code": 0, "result": "Ok", "files": 1},
                    {"code": 24, "result": "FileVerificationSizeMismatch", "files": 1}],
        "runtimeConfiguration": {"state": "good", "code": 0, "result": "Ok"},
        "additions": []})");
    EXPECT_EQ(JsonOf(test::SmallReport()), expected);
}

TEST(CheckJson, HasAdditions) {
    CheckReport report = test::ReportWithAddition();
    report.additions.push_back({AdditionKind::LinkWhereSealed, "data", "../elsewhere", 3, ""});
    report.additions.push_back({AdditionKind::UnlistedLink, "l", "", 0, "unreadable"});
    report.additions.push_back({AdditionKind::NotLookedAt, "s", "", 0, "Permission denied"});
    const json document = JsonOf(report, true);
    EXPECT_EQ(document["status"], 40);
    EXPECT_EQ(document["isStrict"], true);
    EXPECT_EQ(document["additions"], json::parse(R"([
        {"kind": "unlisted file", "path": "x"},
        {"kind": "link where sealed", "path": "data", "target": "../elsewhere", "sealedFiles": 3},
        {"kind": "unlisted link", "path": "l", "reason": "unreadable"},
        {"kind": "not looked at", "path": "s", "reason": "Permission denied"}])"));
}

TEST(CheckJson, TellsOfAVerificationThatEnded) {
    const json document = JsonOf(test::EndedReport());
    EXPECT_EQ(document["verification"], json::parse(R"({"code": 9, "result": "FileInvalid",
        "isComplete": false, "failure": "'mod.bin': damaged"})"));
    EXPECT_EQ(document["runtimeConfiguration"], nullptr);
    EXPECT_EQ(document["files"], json::array());
    EXPECT_EQ(document["catalogues"][1]["code"], 9);
}

TEST(CheckJson, TellsOfARuntimeConfigurationThatIsNotGood) {
    CheckReport report = test::SmallReport();
    report.runtimeConfiguration = RuntimeConfigurationVerdict::CertificateNotParsed;
    report.runtimeConfigurationFailure = "not parsed";
    EXPECT_EQ(JsonOf(report)["runtimeConfiguration"], json::parse(R"({
        "state": "certificate not parsed", "code": 27, "result": "CertIOError",
        "failure": "not parsed"})"));
}

}  // namespace
}  // namespace sealkeeper
