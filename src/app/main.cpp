#include <exception>

#include "app/program.h"

int main(int argc, char** argv) {
    std::set_terminate(sealkeeper::EndForWantOfMemory);
    return sealkeeper::RunProgram(argc, argv);
}
