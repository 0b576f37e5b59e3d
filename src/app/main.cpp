#include "app/program.h"
#include "platform/memory_exhaustion.h"

int main(int argc, char** argv) {
    sealkeeper::EndOutOfMemoryBy(sealkeeper::ReportOutOfMemory);
    return sealkeeper::RunProgram(argc, argv);
}
