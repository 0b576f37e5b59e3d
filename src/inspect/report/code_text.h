// Result codes as all reports word them.
#ifndef SEALKEEPER_INSPECT_REPORT_CODE_TEXT_H
#define SEALKEEPER_INSPECT_REPORT_CODE_TEXT_H

#include <string>

#include "app/result_code.h"

namespace sealkeeper {

// The text of `code`. That of a missing private key has none of its own and is put into words.
[[nodiscard]] const char* CodeName(ResultCode code);

// The number of `code` and, in parentheses, its name: "9 (FileInvalid)".
[[nodiscard]] std::string CodeText(ResultCode code);

}  // namespace sealkeeper

#endif
