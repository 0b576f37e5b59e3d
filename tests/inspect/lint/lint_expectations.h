// Configuration texts for tests of the linter, with marks at the places of expected warnings.
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
    // An '@' stands before the byte that a warning points at, two of them if two warnings do. The
    // marks are no part of the text.
    std::string marked;
    // In the order of the marks. Warnings without a place come first and have no mark.
    std::vector<Told> told;
    std::size_t withoutPlace = 0;
};

void ExpectLinted(const std::vector<LintCase>& cases);

// Expects no warning for any of these.
void ExpectNothingTold(const std::vector<std::string>& texts);

// A complete file with `entries` in one of its sections. They begin on line 4, 2 and 3.
[[nodiscard]] std::string WithSearchOptions(const std::string& entries);
[[nodiscard]] std::string WithOnlySearchOptions(const std::string& entries);
[[nodiscard]] std::string WithRuntime(const std::string& entries);

// The warning about every file without a version.
[[nodiscard]] Told NoVersion();
[[nodiscard]] Told NoPathList();
// The warning about an include list without elements.
[[nodiscard]] Told HashesEverything();
// The warning that follows from an earlier one.
[[nodiscard]] Told EndsAfter(int wrongLine, int line);

}  // namespace sealkeeper::test

#endif
