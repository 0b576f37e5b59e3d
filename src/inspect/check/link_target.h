// Reads symbolic links.
#ifndef SEALKEEPER_INSPECT_CHECK_LINK_TARGET_H
#define SEALKEEPER_INSPECT_CHECK_LINK_TARGET_H

#include "inspect/check/check_report.h"

namespace sealkeeper {

// Reads the target of the link at `link.path`; if that fails, sets `link.reason` instead.
void ReadTarget(Addition& link);

}  // namespace sealkeeper

#endif
