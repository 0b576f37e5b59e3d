#include "inspect/rules/what_is_read.h"

#include <unistd.h>

#include "inspect/report/utf8_text.h"
#include "inspect/tree/access_right.h"

namespace sealkeeper {

ResultCode LookAtWhatIsRead(Selection& selection) {
    bool isStandInRead = false;
    for (SelectedFile& file : selection.files) {
        if (!IsUtf8(file.path)) {
            isStandInRead = true;
            continue;
        }
        if (file.type != FileType::Regular) {
            continue;
        }
        if (const ResultCode code = AskForRight(file.path, R_OK, file.isLocked);
            code != ResultCode::Ok) {
            return code;
        }
    }
    return isStandInRead ? LookAtStandIn(selection.standIn) : ResultCode::Ok;
}

}  // namespace sealkeeper
