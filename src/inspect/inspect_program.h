// Runs sealkeeper-inspect: parses its command line and runs the command it names.
#ifndef SEALKEEPER_INSPECT_INSPECT_PROGRAM_H
#define SEALKEEPER_INSPECT_INSPECT_PROGRAM_H

namespace sealkeeper {

// A terminate handler. Out of memory it prints a message and exits with `kStatusError`; otherwise
// it aborts. It covers two allocations whose exception no caller can catch: nlohmann-json's while
// it destroys a document, and CLI11's before `main`.
[[noreturn]] void EndInspectForWantOfMemory();

// Runs the command that the command line names and returns its exit status. Returns `kUsageStatus`,
// with the reason on standard error, if the command line is wrong.
[[nodiscard]] int RunInspectProgram(int argc, const char* const* argv);

}  // namespace sealkeeper

#endif
