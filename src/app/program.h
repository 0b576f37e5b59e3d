// A run of the program, from its banner to its exit status.
#ifndef SEALKEEPER_APP_PROGRAM_H
#define SEALKEEPER_APP_PROGRAM_H

#include "app/command_line_options.h"
#include "app/result_code.h"

namespace sealkeeper {

// Writes the line that names the program and its version, and an empty line after it.
void PrintBanner();

// Shows the command line as the process received it.
void PrintArguments(int argc, const char* const* argv);

// Runs the action that the command line chose and returns its result code; `Ok` for
// `ActionKind::None`.
ResultCode RunAction(CommandLineOptions& options);

// A terminate handler. Out of memory it prints the message of `RunProgram` and exits with the same
// status; otherwise it aborts. With very little memory the C++ library cannot throw std::bad_alloc.
[[noreturn]] void EndForWantOfMemory();

// The whole program. Returns its exit status. Running out of memory is reported and gives
// `SealkeeperHashtoolGenericError`.
[[nodiscard]] int RunProgram(int argc, const char* const* argv);

}  // namespace sealkeeper

#endif
