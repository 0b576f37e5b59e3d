#include "app/generate_action.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "app/catalogue_builder.h"
#include "app/catalogue_output.h"
#include "app/certificate_copy.h"
#include "app/console_log.h"
#include "app/generate_paths.h"
#include "app/usage_text.h"
#include "catalogue/hash_catalogue.h"
#include "platform/converter_watch.h"
#include "platform/core_dumps.h"
#include "platform/file_system.h"
#include "platform/path_strings.h"
#include "platform/text_encoding.h"
#include "runtime/signing_material.h"

namespace sealkeeper {
namespace {

// The absolute game directory, ending in '/'; nothing, logged, when it is not an existing
// directory.
std::optional<std::string> ResolveGameDirectory(const std::string& asGiven) {
    auto resolved = ResolvePath(asGiven);
    if (!resolved) {
        Log(LogLevel::Error,
            "The provided target game directory's path couldn't be resolved, please make sure it's a valid path: '%s'.\n",
            asGiven.c_str());
        PrintUsage(HelpText::Omitted);
        return std::nullopt;
    }
    EnsureTrailingSeparator(*resolved);
    if (GetFileType(*resolved) != FileType::Directory) {
        Log(LogLevel::Error,
            "The provided path, when converted to absolute path: '%s', does not point to an existing directory.\n",
            resolved->c_str());
        return std::nullopt;
    }
    Log(LogLevel::Info, "Using '%s' as working directory.\n", resolved->c_str());
    return resolved;
}

ResultCode LoadMaterial(CommandLineOptions& options) {
    return LoadSigningMaterial(
        {options.privateKeyFile, options.certificateFile, options.crlFile}, options.productId,
        options.gameDevMode ? TrustCheck::Skipped : TrustCheck::Required, options.signingMaterial);
}

ResultCode PrepareOutputDirectory(const GeneratePaths& paths) {
    if (!paths.isMainCatalogue) {
        Log(LogLevel::Warning,
            "Output name defined, please note that the game's main catalogue MUST be base.bin.\n");
        return ResultCode::Ok;
    }
    Log(LogLevel::Info,
        "Generating the game's main catalogue alongside the associated folder structure.\n");
    Log(LogLevel::Trace, "Creating output directory: '%s'.\n", paths.outputDirectory.c_str());
    if (!CreateDirectories(paths.outputDirectory)) {
        // Deliberately at the trace level, which is never shown: only the exit status tells.
        Log(LogLevel::Trace,
            "Failed to create the output directory: '%s', please create the required directory manually.",
            paths.outputDirectory.c_str());
        return ResultCode::SealkeeperIOError;
    }
    return ResultCode::Ok;
}

ResultCode RequireCurrentDirectory() {
    if (!CurrentDirectory()) {
        Log(LogLevel::Error, "Failed to get working directory for current process.\n");
        return ResultCode::SealkeeperIOError;
    }
    return ResultCode::Ok;
}

ResultCode CatalogueOneFile(CommandLineOptions& options, const GeneratePaths& paths,
                            HashCatalogue& catalogue) {
    const ConverterWatch converter;
    std::vector<FoundFile> files{{Utf8ToWide(options.targetFile), {}}};
    if (const ResultCode code = converter.RequireSound(); code != ResultCode::Ok) {
        return code;
    }
    return CreateCatalogueFile(paths, options.signingMaterial, catalogue, std::move(files), {});
}

// Reports the outcome of the catalogue and copies the certificate. The copy is made even if the
// catalogue failed, unless the system failed to convert a text: such a run writes nothing more.
// Returns the failure of the copy or, if it has none, `catalogueCode`.
ResultCode FinishRun(const CommandLineOptions& options, const GeneratePaths& paths,
                     const ConverterWatch& converter, ResultCode catalogueCode) {
    if (catalogueCode == ResultCode::Ok) {
        Log(LogLevel::Info, "[Success] QVR Hash Catalogue created: %s%s\n",
            paths.outputDirectory.c_str(), paths.catalogueName.c_str());
    } else {
        Log(LogLevel::Error, "No catalogue file was created. Code %i (%s).\n",
            ResultCodeNumber(catalogueCode), ResultFailureText(catalogueCode));
    }
    if (catalogueCode != ResultCode::Ok && converter.HasFailed()) {
        return catalogueCode;
    }
    const ResultCode copyCode =
        CopyCertificate(options.signingMaterial.certificateBytes, paths.CertificateCopyPath());
    if (copyCode != ResultCode::Ok) {
        return copyCode;
    }
    Log(LogLevel::Info, "[Success] Certificate copied: %s%s\n", paths.outputDirectory.c_str(),
        paths.certificateCopyName.c_str());
    return catalogueCode;
}

}  // namespace

ResultCode RunGenerateAction(CommandLineOptions& options) {
    Log(LogLevel::Info, "Generating signed integrity files for: '%s'.\n",
        options.targetGameDir.c_str());
    const auto gameDirectory = ResolveGameDirectory(options.targetGameDir);
    if (!gameDirectory) {
        return ResultCode::CatalogueIOError;
    }
    // From here on, the private key may be in memory.
    SwitchOffCoreDumps();
    if (const ResultCode code = LoadMaterial(options); code != ResultCode::Ok) {
        return code;
    }
    const GeneratePaths paths = MakeGeneratePaths(options);
    if (const ResultCode code = PrepareOutputDirectory(paths); code != ResultCode::Ok) {
        return code;
    }
    if (const ResultCode code = RequireCurrentDirectory(); code != ResultCode::Ok) {
        return code;
    }

    const ConverterWatch converter;
    HashCatalogue catalogue(options.productId, options.jobs);
    if (!options.targetFile.empty()) {
        return FinishRun(options, paths, converter, CatalogueOneFile(options, paths, catalogue));
    }
    CatalogueBuilder builder(options, paths, *gameDirectory, catalogue);
    if (const ResultCode code = builder.Prepare(); code != ResultCode::Ok) {
        return code;
    }
    if (const ResultCode code = builder.FindFiles(); code != ResultCode::Ok) {
        return code;
    }
    return FinishRun(options, paths, converter, builder.MakeCatalogue());
}

}  // namespace sealkeeper
