#include "app/program.h"

int main(int argc, char** argv) {
    return sealkeeper::RunProgram(argc, argv);
}
