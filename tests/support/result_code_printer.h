// How a failed assertion shows a result code. The build includes this file in every test file that
// asserts one, so that all of them use the same function.
#ifndef SEALKEEPER_TESTS_SUPPORT_RESULT_CODE_PRINTER_H
#define SEALKEEPER_TESTS_SUPPORT_RESULT_CODE_PRINTER_H

#include <iosfwd>

#include "app/result_code.h"

namespace sealkeeper {

// Writes the code's text and number to `stream`. GoogleTest finds the function by its name.
void PrintTo(ResultCode code, std::ostream* stream);

}  // namespace sealkeeper

#endif
