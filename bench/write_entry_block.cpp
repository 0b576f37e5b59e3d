// write_entry_block PATH: writes the entry block that the LZW benchmark works on.
#include <cstddef>
#include <cstdint>
#include <fstream>
#include <iostream>
#include <vector>

#include "sample_entry_block.h"

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: sealkeeper_write_entry_block PATH\n";
        return 1;
    }
    const std::vector<std::uint8_t> block =
        sealkeeper::bench::MakeSampleEntryBlock(sealkeeper::bench::kSampleEntryCount);
    std::ofstream file(argv[1], std::ios::binary);
    file.write(reinterpret_cast<const char*>(block.data()),
               static_cast<std::streamsize>(block.size()));
    file.close();
    if (!file) {
        std::cerr << "sealkeeper_write_entry_block: cannot write '" << argv[1] << "'\n";
        return 1;
    }
    return 0;
}
