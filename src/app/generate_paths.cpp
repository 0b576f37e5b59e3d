#include "app/generate_paths.h"

#include "app/certificates_directory.h"
#include "catalogue/catalogue_format.h"
#include "platform/ascii_case.h"
#include "platform/path_strings.h"

namespace sealkeeper {
namespace {

bool IsMainCatalogueName(const std::string& name) {
    return LowerCasedAscii(name) == kMainCatalogueName;
}

}  // namespace

GeneratePaths MakeGeneratePaths(const CommandLineOptions& options) {
    GeneratePaths paths;
    paths.isMainCatalogue = IsMainCatalogueName(options.outputName);
    if (paths.isMainCatalogue) {
        paths.outputDirectory = options.targetGameDir;
        EnsureTrailingSeparator(paths.outputDirectory);
        paths.outputDirectory += kCertificatesDirectory;
    }
    paths.catalogueName = options.outputName + kCatalogueExtension;
    paths.certificateCopyName = options.outputName + kCertificateExtension;
    return paths;
}

}  // namespace sealkeeper
