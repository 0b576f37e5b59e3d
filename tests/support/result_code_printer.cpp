#include "support/result_code_printer.h"

#include <ostream>

namespace sealkeeper {

void PrintTo(ResultCode code, std::ostream* stream) {
    *stream << ResultCodeText(code) << " (" << ResultCodeNumber(code) << ")";
}

}  // namespace sealkeeper
