// Feeds any bytes as a catalogue and as runtime.conf. Neither may verify with the key of the
// built-in authority, which has signed neither.
#include <vector>

#include "catalogue/catalogue_format.h"
#include "catalogue/catalogue_signature.h"
#include "fuzzer.h"
#include "runtime/certificate_trust.h"
#include "runtime/runtime_configuration_reader.h"

namespace {

sealkeeper::Certificate& Authority() {
    static sealkeeper::Certificate authority;
    static const int error =
        sealkeeper::ParseCertificate(sealkeeper::BuiltInTrustMaterial().authorityDer, authority);
    sealkeeper::fuzz::Require(error == 0);
    return authority;
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace sealkeeper;
    std::vector<std::uint8_t> configuration(data, data + size);
    fuzz::Require(!ValidateRuntimeConfiguration(configuration, Authority()));
    if (size >= catalogue_header::kSizeBytes) {
        std::vector<std::uint8_t> catalogue(data, data + size);
        fuzz::Require(VerifyCatalogueSignature(&Authority().Get()->pk, catalogue) !=
                      ResultCode::Ok);
    }
    return 0;
}
