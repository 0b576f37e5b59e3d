#include "support/temp_directory.h"

#include <gtest/gtest.h>
#include <stdlib.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace sealkeeper::test {

namespace fs = std::filesystem;

TempDirectory::TempDirectory() {
    // Resolved, since the system's temporary directory may be a link.
    std::string pattern = fs::canonical(fs::temp_directory_path()) / "sealkeeper_test_XXXXXX";
    if (mkdtemp(pattern.data()) == nullptr) {
        throw std::runtime_error("no temporary directory");
    }
    path_ = pattern;
}

TempDirectory::~TempDirectory() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
}

std::string TempDirectory::WriteFile(const std::string& name, const std::string& content) const {
    const fs::path path = fs::path(path_) / name;
    fs::create_directories(path.parent_path());
    std::ofstream stream(path, std::ios::binary);
    stream << content;
    stream.close();
    if (!stream) {
        throw std::runtime_error("cannot write " + path.string());
    }
    return path.string();
}

void TempDirectory::RewriteFile(const std::string& name, const std::string& content) const {
    const fs::file_time_type before = fs::last_write_time(fs::path(path_) / name);
    do {
        WriteFile(name, content);
    } while (fs::last_write_time(fs::path(path_) / name) == before);
}

ScopedCurrentDirectory::ScopedCurrentDirectory(const std::string& directory)
    : previous_(fs::current_path()) {
    fs::current_path(directory);
}

ScopedCurrentDirectory::~ScopedCurrentDirectory() {
    fs::current_path(previous_);
}

std::string ReadFile(const std::string& path) {
    std::ifstream stream(path, std::ios::binary);
    EXPECT_TRUE(stream.is_open()) << path;
    return {std::istreambuf_iterator<char>(stream), {}};
}

}  // namespace sealkeeper::test
