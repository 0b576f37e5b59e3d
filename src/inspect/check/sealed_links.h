// Symbolic links on the way to sealed files. Verifying follows them: what it finds there may be
// right, but is another place than the one that was sealed, and one that can be changed from
// outside of the game.
#ifndef SEALKEEPER_INSPECT_CHECK_SEALED_LINKS_H
#define SEALKEEPER_INSPECT_CHECK_SEALED_LINKS_H

#include <map>
#include <string>
#include <unordered_map>
#include <vector>

#include "inspect/check/check_report.h"

namespace sealkeeper {

// Looks at each directory once, from the current directory.
class SealedLinks {
  public:
    // Looks for links at `path`, from the current directory or absolute, and at each directory on
    // the way to it.
    void LookOnTheWayTo(const std::string& path);

    // The links, with their targets and how many of the paths they stand in the way to; and what
    // the system failed to look at.
    [[nodiscard]] std::vector<Addition> Additions() const;

  private:
    enum class Found { NoLink, Link, Failure };

    Found LookAt(const std::string& path);
    Found LookAtDirectory(const std::string& path);

    // By path.
    std::map<std::string, Addition> found_;
    std::unordered_map<std::string, Found> directories_;
};

}  // namespace sealkeeper

#endif
