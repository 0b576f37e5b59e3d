#include "inspect/inspect_program.h"

int main(int argc, char** argv) {
    return sealkeeper::RunInspectProgram(argc, argv);
}
