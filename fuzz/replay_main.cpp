// Runs a fuzzer's function over every file of a folder, and over every truncation of each.
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

#include "fuzzer.h"

namespace {

std::vector<std::uint8_t> ReadFile(const std::filesystem::path& path) {
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fputs("usage: FUZZER FOLDER\n", stderr);
        return 2;
    }
    std::size_t files = 0;
    for (const auto& entry : std::filesystem::directory_iterator(argv[1])) {
        const std::vector<std::uint8_t> bytes = ReadFile(entry.path());
        for (std::size_t size = 0; size <= bytes.size(); ++size) {
            // A copy of the exact size, so that the address sanitizer sees a read past the end.
            const std::vector<std::uint8_t> input(bytes.data(), bytes.data() + size);
            static_cast<void>(LLVMFuzzerTestOneInput(input.data(), input.size()));
        }
        ++files;
    }
    std::printf("%zu files\n", files);
    return files > 0 ? 0 : 1;
}
