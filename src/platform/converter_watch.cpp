#include "platform/converter_watch.h"

#include "app/console_log.h"

namespace sealkeeper {

ResultCode ConverterWatch::RequireSound() const {
    if (HasFailed()) {
        Log(LogLevel::Error,
            "The system's character-set converter could not be used, so names would be wrong.\n");
        return ResultCode::CatalogueError;
    }
    return ResultCode::Ok;
}

}  // namespace sealkeeper
