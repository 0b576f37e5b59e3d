#include "support/captured_output.h"

#include <unistd.h>

#include <stdexcept>

namespace sealkeeper::test {

CapturedOutput::CapturedOutput() : file_(std::tmpfile()), savedDescriptor_(-1) {
    std::fflush(stdout);
    savedDescriptor_ = dup(STDOUT_FILENO);
    if (file_ == nullptr || savedDescriptor_ < 0 || dup2(fileno(file_), STDOUT_FILENO) < 0) {
        throw std::runtime_error("cannot capture standard output");
    }
}

CapturedOutput::~CapturedOutput() {
    Restore();
    std::fclose(file_);
}

std::string CapturedOutput::Take() {
    Restore();
    std::string text;
    std::rewind(file_);
    for (int byte = std::fgetc(file_); byte != EOF; byte = std::fgetc(file_)) {
        text.push_back(static_cast<char>(byte));
    }
    return text;
}

void CapturedOutput::Restore() {
    if (savedDescriptor_ < 0) {
        return;
    }
    std::fflush(stdout);
    dup2(savedDescriptor_, STDOUT_FILENO);
    close(savedDescriptor_);
    savedDescriptor_ = -1;
}

}  // namespace sealkeeper::test
