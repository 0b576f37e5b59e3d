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
    int systemError;
};

std::optional<FailingPath>& Armed() {
    static std::optional<FailingPath> armed;
    return armed;
}

bool FailsAt(PathCall call, const char* path) {
    const bool fails = Armed() && Armed()->call == call && Armed()->path == path;
    if (fails) {
        errno = Armed()->systemError;
    }
    return fails;
}

}  // namespace

ScopedFailingPath::ScopedFailingPath(PathCall call, const std::string& path, int systemError) {
    Armed() = {call, path, systemError};
}

ScopedFailingPath::~ScopedFailingPath() {
    Armed().reset();
}

}  // namespace sealkeeper::test

extern "C" {

int access(const char* path, int right) SEALKEEPER_NOTHROW {
    return sealkeeper::test::FailsAt(sealkeeper::test::PathCall::Access, path)
               ? -1
               : sealkeeper::test::Real<int(const char*, int)>("access")(path, right);
}

char* realpath(const char* path, char* resolved) SEALKEEPER_NOTHROW {
    return sealkeeper::test::FailsAt(sealkeeper::test::PathCall::RealPath, path)
               ? nullptr
               : sealkeeper::test::Real<char*(const char*, char*)>("realpath")(path, resolved);
}

int stat(const char* path, struct stat* status) SEALKEEPER_NOTHROW {
    return sealkeeper::test::FailsAt(sealkeeper::test::PathCall::Stat, path)
               ? -1
               : sealkeeper::test::Real<int(const char*, struct stat*)>("stat")(path, status);
}

}  // extern "C"
