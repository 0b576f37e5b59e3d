// The run of sealkeeper-inspect: its command line, and the command that it names.
#ifndef SEALKEEPER_INSPECT_INSPECT_PROGRAM_H
#define SEALKEEPER_INSPECT_INSPECT_PROGRAM_H

namespace sealkeeper {

// Runs the command that the command line names and returns its exit status; `kUsageStatus`, with
// the reason on standard error, for a command line that says no command.
[[nodiscard]] int RunInspectProgram(int argc, const char* const* argv);

}  // namespace sealkeeper

#endif
