// Detects that the system failed to convert text. The error text that such a conversion returns
// stands for a name that may well be valid, so it must not be stored, looked up or shown as that
// name.
#ifndef SEALKEEPER_PLATFORM_CONVERTER_WATCH_H
#define SEALKEEPER_PLATFORM_CONVERTER_WATCH_H

#include <cstddef>

#include "app/result_code.h"
#include "platform/text_encoding.h"

namespace sealkeeper {

class ConverterWatch {
  public:
    // Whether the system failed to convert a text since this object was made.
    [[nodiscard]] bool HasFailed() const { return ConverterFailures() != failuresBefore_; }

    // `CatalogueError`, logged, when it has failed.
    ResultCode RequireSound() const;

  private:
    std::size_t failuresBefore_ = ConverterFailures();
};

}  // namespace sealkeeper

#endif
