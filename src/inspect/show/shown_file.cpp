#include "inspect/show/shown_file.h"

#include "inspect/report/command_status.h"

namespace sealkeeper {

int StatusOf(const ShownFile& file) {
    if (file.invalid) {
        return kStatusError;
    }
    if (!file.signature || file.signature->state != SignatureState::Good) {
        return kStatusWarning;
    }
    return file.signature->trust && !file.signature->trust->isTrusted ? kStatusWarning
                                                                      : kStatusGood;
}

}  // namespace sealkeeper
