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

// Shows that memory ran out and returns the exit status for that. Allocates nothing.
[[nodiscard]] int ReportOutOfMemory();

// The whole program. Returns its exit status. Out of memory that is the one of
// `ReportOutOfMemory`.
[[nodiscard]] int RunProgram(int argc, const char* const* argv);

}  // namespace sealkeeper

#endif
