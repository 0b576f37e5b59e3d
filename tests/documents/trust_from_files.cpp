// Reads the trust material at start-up instead of building it in. A page that makes an authority
// can then be tested without building the program for each. Only programs for tests link this.
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <iterator>
#include <vector>

#include "runtime/trust_material.h"

namespace sealkeeper {
namespace {

std::vector<std::uint8_t> FileNamedBy(const char* variable) {
    const char* path = std::getenv(variable);
    std::ifstream file(path == nullptr ? "" : path, std::ios::binary);
    if (!file) {
        std::cerr << variable << " names no file that can be read\n";
        std::abort();
    }
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

}  // namespace

TrustMaterial BuiltInTrustMaterial() {
    static const std::vector<std::uint8_t> authority = FileNamedBy("SEALKEEPER_TEST_TRUST_CA");
    static const std::vector<std::uint8_t> list = FileNamedBy("SEALKEEPER_TEST_TRUST_CRL");
    return {authority, list};
}

}  // namespace sealkeeper
