// Lets the system fail at one path. The test executable defines its own versions of the functions
// that look at a path, which the code under test, linked statically, then calls.
#ifndef SEALKEEPER_TESTS_INSPECT_RULES_FAILING_PATH_H
#define SEALKEEPER_TESTS_INSPECT_RULES_FAILING_PATH_H

#include <cerrno>
#include <string>

namespace sealkeeper::test {

enum class PathCall { Access, RealPath, Stat };

// Until its end, `call` fails with `systemError` for paths that are spelt as `path`. One at a time.
class ScopedFailingPath {
  public:
    ScopedFailingPath(PathCall call, const std::string& path, int systemError = EIO);
    ScopedFailingPath(const ScopedFailingPath&) = delete;
    ScopedFailingPath& operator=(const ScopedFailingPath&) = delete;
    ~ScopedFailingPath();
};

}  // namespace sealkeeper::test

#endif
