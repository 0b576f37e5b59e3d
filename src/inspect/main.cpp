#include "inspect/inspect_program.h"
#include "platform/memory_exhaustion.h"

namespace {

// Set before `main`, since CLI11 allocates while its globals are constructed. This file is linked
// first. Later it is for nlohmann-json, which allocates while it destroys a document.
[[maybe_unused]] const std::terminate_handler kReplacedHandler =
    sealkeeper::EndOutOfMemoryBy(sealkeeper::SayOutOfMemory);

}  // namespace

int main(int argc, char** argv) {
    return sealkeeper::RunInspectProgram(argc, argv);
}
