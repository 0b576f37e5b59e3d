// Reports as JUnit XML, which build servers read as test results.
#ifndef SEALKEEPER_INSPECT_REPORT_JUNIT_H
#define SEALKEEPER_INSPECT_REPORT_JUNIT_H

#include <string>
#include <vector>

namespace sealkeeper {

struct JunitCase {
    enum class Outcome { Passed, Failure, Error, Skipped };

    std::string className;
    std::string name;
    Outcome outcome = Outcome::Passed;
    // Both are empty for a passed case. The type is for failures and errors only.
    std::string type;
    std::string message;
};

struct JunitSuite {
    std::string name;
    std::vector<JunitCase> cases;
};

// The whole document, in UTF-8. Texts pass through `XmlText`.
[[nodiscard]] std::string JunitText(const std::string& name, const std::vector<JunitSuite>& suites);

}  // namespace sealkeeper

#endif
