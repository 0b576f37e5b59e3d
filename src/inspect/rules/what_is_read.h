// What generate would read of a selection.
#ifndef SEALKEEPER_INSPECT_RULES_WHAT_IS_READ_H
#define SEALKEEPER_INSPECT_RULES_WHAT_IS_READ_H

#include "app/result_code.h"
#include "inspect/rules/selection.h"

namespace sealkeeper {

// Sets `isLocked` of the files that generate reads, which are regular files whose names are UTF-8,
// and the stand-in if the name of any file is not UTF-8. The current directory is the game
// directory. Fails as `JudgeLookError` does; some files may be set then.
ResultCode LookAtWhatIsRead(Selection& selection);

}  // namespace sealkeeper

#endif
