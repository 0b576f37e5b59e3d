#include "scratch_directory.h"

#include <stdlib.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <system_error>

namespace sealkeeper::fuzz {

namespace fs = std::filesystem;

ScratchDirectory::ScratchDirectory() {
    const fs::path inMemory = "/dev/shm";
    const bool isUsable = access(inMemory.c_str(), W_OK | X_OK) == 0;
    std::string pattern =
        fs::canonical(isUsable ? inMemory : fs::temp_directory_path()) / "sealkeeper_fuzzer_XXXXXX";
    Require(mkdtemp(pattern.data()) != nullptr);
    path_ = pattern + "/";
}

ScratchDirectory::~ScratchDirectory() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
}

void ScratchDirectory::Write(const std::string& name, ByteView content) const {
    const std::string path = path_ + name;
    std::ofstream stream(path, std::ios::binary);
    if (!stream.is_open()) {
        fs::create_directories(fs::path(path).parent_path());
        stream.open(path, std::ios::binary);
    }
    for (const std::uint8_t byte : content) {
        stream.put(static_cast<char>(byte));
    }
    stream.close();
    Require(stream.good());
}

Bytes ContentOf(const std::string& path) {
    std::ifstream stream(path, std::ios::binary);
    Require(stream.is_open());
    return {std::istreambuf_iterator<char>(stream), {}};
}

}  // namespace sealkeeper::fuzz
