// Runs sealkeeper-inspect: parses its command line and runs the command it names.
#ifndef SEALKEEPER_INSPECT_INSPECT_PROGRAM_H
#define SEALKEEPER_INSPECT_INSPECT_PROGRAM_H

namespace sealkeeper {

// Says on standard error that memory ran out and returns `kStatusError`. Allocates nothing.
[[nodiscard]] int SayOutOfMemory();

// Runs the command that the command line names and returns its exit status. Returns `kUsageStatus`,
// with the reason on standard error, if the command line is wrong.
[[nodiscard]] int RunInspectProgram(int argc, const char* const* argv);

}  // namespace sealkeeper

#endif
