#include <exception>

#include "inspect/inspect_program.h"

namespace {

// Set before `main`, since CLI11 allocates while its globals are constructed. This file is linked
// first.
[[maybe_unused]] const std::terminate_handler kReplacedHandler =
    std::set_terminate(sealkeeper::EndInspectForWantOfMemory);

}  // namespace

int main(int argc, char** argv) {
    return sealkeeper::RunInspectProgram(argc, argv);
}
