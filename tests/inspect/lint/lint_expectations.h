// Configuration texts for tests of the linter, with marks where a warning is expected.
#ifndef SEALKEEPER_TESTS_INSPECT_LINT_LINT_EXPECTATIONS_H
#define SEALKEEPER_TESTS_INSPECT_LINT_LINT_EXPECTATIONS_H

#include <string>
#include <vector>

namespace sealkeeper::test {

struct Told {
    std::string message;
    std::string cure;
};

struct LintCase {
    const char* name;
    // An '@', which is not part of the text, stands before the byte that a warning points at. Two
    // of them stand where two warnings point.
    std::string marked;
    // In the order of the marks. Those without a place come before all others, and have no mark.
    std::vector<Told> told;
    std::size_t withoutPlace = 0;
};

void ExpectLinted(const std::vector<LintCase>& cases);

// Nothing is told of any of these.
void ExpectNothingTold(const std::vector<std::string>& texts);

// A file with all that the tool asks for, and `entries` in one of its sections. They begin on line
// 4, 2 and 3.
[[nodiscard]] std::string WithSearchOptions(const std::string& entries);
[[nodiscard]] std::string WithOnlySearchOptions(const std::string& entries);
[[nodiscard]] std::string WithRuntime(const std::string& entries);

// What every file is told that lacks it.
[[nodiscard]] Told NoVersion();
[[nodiscard]] Told NoPathList();
// An include list without an element.
[[nodiscard]] Told HashesEverything();
// What comes of an earlier warning.
[[nodiscard]] Told EndsAfter(int wrongLine, int line);

}  // namespace sealkeeper::test

#endif
