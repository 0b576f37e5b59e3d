#include "catalogue/certificate_path.h"

#include "catalogue/catalogue_format.h"

namespace sealkeeper {

std::optional<std::string> CertificatePathOf(const std::string& cataloguePath) {
    const std::size_t extension = cataloguePath.rfind('.');
    if (extension == std::string::npos) {
        return std::nullopt;
    }
    return cataloguePath.substr(0, extension) + kCertificateExtension;
}

}  // namespace sealkeeper
