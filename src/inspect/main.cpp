#include <exception>

#include "inspect/inspect_program.h"

namespace {

// Not in `main`, before which CLI11's own variables are made. The linkers take this file first.
[[maybe_unused]] const std::terminate_handler kReplacedHandler =
    std::set_terminate(sealkeeper::EndForWantOfMemory);

}  // namespace

int main(int argc, char** argv) {
    return sealkeeper::RunInspectProgram(argc, argv);
}
