// Finds symbolic links on the paths of sealed files. Verify follows them: what it finds there may
// be correct, but it is not the place that was sealed, and it may be changed from outside the game.
#ifndef SEALKEEPER_INSPECT_CHECK_SEALED_LINKS_H
#define SEALKEEPER_INSPECT_CHECK_SEALED_LINKS_H

#include <map>
#include <string>
#include <unordered_map>
#include <vector>

#include "inspect/check/check_report.h"

namespace sealkeeper {

// Examines each directory once, starting from the current directory.
class SealedLinks {
  public:
    // Examines `path`, relative or absolute, and each directory on it for links.
    void LookOnTheWayTo(const std::string& path);

    // The links, with their targets and the number of paths through each, and what could not be
    // examined.
    [[nodiscard]] std::vector<Addition> Additions() const;

  private:
    enum class Found { NoLink, Link, Failure };

    Found LookAt(const std::string& path);
    Found LookAtDirectory(const std::string& path);

    // Keyed by path.
    std::map<std::string, Addition> found_;
    std::unordered_map<std::string, Found> directories_;
};

}  // namespace sealkeeper

#endif
