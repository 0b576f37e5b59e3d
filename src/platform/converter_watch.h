// What follows from a system that cannot convert text: the error text that a conversion gives then
// stands for a name that nobody has found fault with, so it must be neither stored, looked up nor
// shown as one.
#ifndef SEALKEEPER_PLATFORM_CONVERTER_WATCH_H
#define SEALKEEPER_PLATFORM_CONVERTER_WATCH_H

#include <cstddef>

#include "app/result_code.h"
#include "platform/text_encoding.h"

namespace sealkeeper {

class ConverterWatch {
  public:
    // Whether the system failed to convert a text since this was made.
    [[nodiscard]] bool HasFailed() const { return ConverterFailures() != failuresBefore_; }

    // `CatalogueError`, logged, when it has failed.
    ResultCode RequireSound() const;

  private:
    std::size_t failuresBefore_ = ConverterFailures();
};

}  // namespace sealkeeper

#endif
