#include "inspect/rules/planned_outputs.h"

#include "app/certificates_directory.h"
#include "app/command_line_options.h"
#include "app/generate_paths.h"
#include "inspect/tree/lexical_path.h"
#include "runtime/runtime_configuration_writer.h"

namespace sealkeeper {

PlannedOutputs PlanOutputs(const std::string& gameDirectory, const std::string& outputName) {
    CommandLineOptions options;
    options.targetGameDir = gameDirectory;
    options.outputName = outputName;
    const GeneratePaths paths = MakeGeneratePaths(options);

    PlannedOutputs outputs;
    std::string folder;
    if (paths.isMainCatalogue) {
        folder = LexicalPath(kCertificatesDirectory);
        outputs.directories = {std::string(ParentOf(folder)), folder};
        folder += '/';
    }
    // Compared with letter case: an output name "Base" gets none.
    if (outputName == kMainCatalogueName) {
        outputs.runtimeConfiguration = folder + kRuntimeConfigurationFileName;
    }
    outputs.catalogue = LexicalPath(folder + paths.catalogueName);
    outputs.certificateCopy = LexicalPath(folder + paths.certificateCopyName);
    outputs.pathToLeaveOut = paths.CertificateCopyPath();
    return outputs;
}

}  // namespace sealkeeper
