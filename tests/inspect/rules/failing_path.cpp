#include "inspect/rules/failing_path.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <optional>

#include "fault/interposition.h"

namespace sealkeeper::test {
namespace {

struct FailingPath {
    PathCall call;
    std::string path;
};

std::optional<FailingPath>& Armed() {
    static std::optional<FailingPath> armed;
    return armed;
}

bool FailsAt(PathCall call, const char* path) {
    const bool fails = Armed() && Armed()->call == call && Armed()->path == path;
    if (fails) {
        errno = EIO;
    }
    return fails;
}

}  // namespace

ScopedFailingPath::ScopedFailingPath(PathCall call, const std::string& path) {
    Armed() = {call, path};
}

ScopedFailingPath::~ScopedFailingPath() {
    Armed().reset();
}

}  // namespace sealkeeper::test

using sealkeeper::test::FailsAt;
using sealkeeper::test::PathCall;
using sealkeeper::test::Real;

extern "C" {

int access(const char* path, int right) SEALKEEPER_NOTHROW {
    return FailsAt(PathCall::Access, path) ? -1
                                           : Real<int(const char*, int)>("access")(path, right);
}

char* realpath(const char* path, char* resolved) SEALKEEPER_NOTHROW {
    return FailsAt(PathCall::RealPath, path)
               ? nullptr
               : Real<char*(const char*, char*)>("realpath")(path, resolved);
}

int stat(const char* path, struct stat* status) SEALKEEPER_NOTHROW {
    return FailsAt(PathCall::Stat, path)
               ? -1
               : Real<int(const char*, struct stat*)>("stat")(path, status);
}

}  // extern "C"
