// The expansion of one path pattern by the system.
#ifndef SEALKEEPER_PLATFORM_GLOB_RESULT_H
#define SEALKEEPER_PLATFORM_GLOB_RESULT_H

#include <glob.h>

#include <span>
#include <string>

namespace sealkeeper {

// Owner of what POSIX `glob` allocates.
class GlobResult {
  public:
    // Expands `pattern`; `flags` are those of `glob`.
    GlobResult(const std::string& pattern, int flags)
        : status_(glob(pattern.c_str(), flags, nullptr, &result_)) {}
    GlobResult(const GlobResult&) = delete;
    GlobResult& operator=(const GlobResult&) = delete;
    ~GlobResult() { globfree(&result_); }

    // What `glob` returned: 0 when something matched.
    [[nodiscard]] int Status() const { return status_; }
    [[nodiscard]] std::span<char*> Paths() const { return {result_.gl_pathv, result_.gl_pathc}; }

  private:
    glob_t result_{};
    int status_;
};

// `path` as a pattern that matches nothing but itself: the characters that have a meaning in
// patterns are escaped.
[[nodiscard]] std::string LiteralGlobPattern(const std::string& path);

}  // namespace sealkeeper

#endif
