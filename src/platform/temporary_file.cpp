#include "platform/temporary_file.h"

#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <utility>

namespace sealkeeper {
namespace {

constexpr const char* kNamePrefix = ".sk";

// With the prefix, the name is as long as "base.bin". So wherever the path of a main output fits,
// the path of its temporary file fits as well.
constexpr std::size_t kNumberDigits = 5;
constexpr std::uint32_t kNumbers = 100'000;

// Far more than the files that killed runs left behind and that other runs have open.
constexpr std::uint32_t kMostAttempts = 1000;

std::string NumberText(std::uint32_t number) {
    const std::string digits = std::to_string(number % kNumbers);
    return std::string(kNumberDigits - digits.size(), '0') + digits;
}

}  // namespace

TemporaryFile::~TemporaryFile() {
    if (!path_.empty()) {
        unlink(path_.c_str());
    }
}

bool TemporaryFile::CreateIn(const std::string& directory, mode_t mode) {
    // Simultaneous runs start at different numbers.
    const auto firstNumber = static_cast<std::uint32_t>(getpid());
    for (std::uint32_t attempt = 0; attempt < kMostAttempts; ++attempt) {
        std::string path = directory + kNamePrefix + NumberText(firstNumber + attempt);
        if (descriptor_.Create(path, mode)) {
            path_ = std::move(path);
            return true;
        }
        if (errno != EEXIST) {
            return false;
        }
    }
    return false;
}

bool TemporaryFile::RenameTo(const std::string& target) {
    if (std::rename(path_.c_str(), target.c_str()) != 0) {
        return false;
    }
    path_.clear();
    return true;
}

}  // namespace sealkeeper
