// The messages about what a pattern matches.
#ifndef SEALKEEPER_TESTS_CONFIG_PATTERN_MESSAGES_H
#define SEALKEEPER_TESTS_CONFIG_PATTERN_MESSAGES_H

#include <string>

namespace sealkeeper::test {

[[nodiscard]] inline std::string Matched(const std::string& pattern) {
    return "[Info] The following matched certain files in the target directory: '" + pattern +
           "'.\n";
}

[[nodiscard]] inline std::string NotMatched(const std::string& pattern) {
    return "[Warn] The following did not match any files, consider removing it: '" + pattern +
           "'.\n";
}

}  // namespace sealkeeper::test

#endif
