// The run of sealkeeper-inspect: its command line, and the command that it names.
#ifndef SEALKEEPER_INSPECT_INSPECT_PROGRAM_H
#define SEALKEEPER_INSPECT_INSPECT_PROGRAM_H

namespace sealkeeper {

// Ends the program with `kStatusError` and a message where no memory was left, else by `abort`. A
// terminate handler: nlohmann-json takes memory where it frees a document and CLI11 before `main`
// begins, from neither of which an exception comes out.
[[noreturn]] void EndForWantOfMemory();

// Runs the command that the command line names and returns its exit status; `kUsageStatus`, with
// the reason on standard error, for a command line that says no command.
[[nodiscard]] int RunInspectProgram(int argc, const char* const* argv);

}  // namespace sealkeeper

#endif
