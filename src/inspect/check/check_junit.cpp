#include "inspect/check/check_junit.h"

#include <utility>

#include "inspect/report/code_text.h"

namespace sealkeeper {
namespace {

using Outcome = JunitCase::Outcome;

std::string NumberText(ResultCode code) {
    return std::to_string(ResultCodeNumber(code));
}

JunitCase CatalogueCase(const CheckedCatalogue& catalogue, const CheckReport& report) {
    JunitCase test{"verification", catalogue.name, Outcome::Passed, {}, {}};
    if (catalogue.code != ResultCode::Ok) {
        test.outcome = Outcome::Error;
        test.type = NumberText(catalogue.code);
        test.message = report.failure;
    }
    return test;
}

JunitCase RuntimeConfigurationCase(const CheckReport& report) {
    JunitCase test{"verification", "runtime.conf", Outcome::Passed, {}, {}};
    if (!report.runtimeConfiguration) {
        test.outcome = Outcome::Skipped;
        test.message = "the verification ended before";
        return test;
    }
    const RuntimeConfigurationVerdict verdict = *report.runtimeConfiguration;
    if (verdict == RuntimeConfigurationVerdict::NotRead) {
        test.outcome = Outcome::Skipped;
        test.message = "there is none that can be read";
    } else if (verdict != RuntimeConfigurationVerdict::Good) {
        test.outcome = Outcome::Failure;
        test.type = NumberText(CodeOf(verdict));
        test.message = report.runtimeConfigurationFailure;
    }
    return test;
}

// The catalogues, runtime.conf, and any other reason why the verification ended.
JunitSuite VerificationSuite(const CheckReport& report) {
    JunitSuite suite{"verification", {}};
    for (const CheckedCatalogue& catalogue : report.catalogues) {
        suite.cases.push_back(CatalogueCase(catalogue, report));
    }
    suite.cases.push_back(RuntimeConfigurationCase(report));
    const bool isOfCatalogue =
        !report.catalogues.empty() && report.catalogues.back().code != ResultCode::Ok;
    if (!report.failure.empty() && !isOfCatalogue) {
        suite.cases.push_back({"verification", "verification", Outcome::Error,
                               NumberText(report.code), report.failure});
    }
    return suite;
}

JunitCase FileCase(const CheckedFile& file, const std::string& catalogue) {
    JunitCase test{catalogue, file.path, Outcome::Passed, {}, {}};
    if (file.code != ResultCode::Ok) {
        test.outcome = Outcome::Failure;
        test.type = NumberText(file.code);
        test.message = CodeText(file.code);
        test.message += file.isAliased ? ": the path is that of an alias" : "";
    }
    return test;
}

// One suite for each catalogue.
std::vector<JunitSuite> FileSuites(const CheckReport& report) {
    std::vector<JunitSuite> suites;
    for (const CheckedCatalogue& catalogue : report.catalogues) {
        suites.push_back({catalogue.name, {}});
    }
    for (const CheckedFile& file : report.files) {
        const std::string& catalogue = report.catalogues[file.catalogueIndex].name;
        suites[file.catalogueIndex].cases.push_back(FileCase(file, catalogue));
    }
    return suites;
}

JunitCase AdditionCase(const Addition& addition, bool isStrict) {
    std::string message = AdditionKindText(addition.kind);
    message += addition.target.empty() ? "" : ", leads to " + addition.target;
    message += addition.reason.empty() ? "" : ": " + addition.reason;
    if (isStrict) {
        return {"additions", addition.path, Outcome::Failure, std::to_string(kAdditionsStatus),
                std::move(message)};
    }
    message += " (fails with --strict alone)";
    return {"additions", addition.path, Outcome::Skipped, {}, std::move(message)};
}

JunitSuite AdditionsSuite(const CheckReport& report, bool isStrict) {
    JunitSuite suite{"additions", {}};
    for (const Addition& addition : report.additions) {
        suite.cases.push_back(AdditionCase(addition, isStrict));
    }
    return suite;
}

}  // namespace

std::vector<JunitSuite> CheckJunitSuites(const CheckReport& report, bool isStrict) {
    std::vector<JunitSuite> suites = {VerificationSuite(report)};
    for (JunitSuite& suite : FileSuites(report)) {
        suites.push_back(std::move(suite));
    }
    suites.push_back(AdditionsSuite(report, isStrict));
    return suites;
}

std::string CheckJunit(const CheckReport& report, bool isStrict) {
    return JunitText("sealkeeper-inspect check", CheckJunitSuites(report, isStrict));
}

}  // namespace sealkeeper
