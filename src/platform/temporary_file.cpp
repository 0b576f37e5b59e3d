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

// Of the number in the name: it has as many digits as fit beside the prefix into the length of
// "base.bin", so that no path of the game's main outputs has room where its temporary file has
// none.
constexpr std::size_t kNumberDigits = 5;
constexpr std::uint32_t kNumbers = 100'000;

// Killed runs leave files behind and others are running; nowhere near so many.
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
    // Runs at the same time begin with different numbers.
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
