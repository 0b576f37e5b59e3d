#include "app/catalogue_builder.h"

#include <unistd.h>

#include <utility>
#include <vector>

#include "app/catalogue_output.h"
#include "app/console_log.h"
#include "config/catalogue_rules.h"
#include "config/config_names.h"
#include "platform/file_system.h"
#include "platform/path_strings.h"
#include "platform/text_encoding.h"
#include "runtime/certificate_trust.h"
#include "runtime/runtime_configuration_writer.h"
#include "runtime/runtime_settings.h"
#include "runtime/trust_material.h"

namespace sealkeeper {

CatalogueBuilder::CatalogueBuilder(CommandLineOptions& options, const GeneratePaths& paths,
                                   const std::string& gameDirectory, HashCatalogue& catalogue)
    : options_(options),
      paths_(paths),
      catalogue_(catalogue),
      programName_(BaseName(options.programPath)),
      collector_(gameDirectory) {}

ResultCode CatalogueBuilder::Prepare() {
    if (const ResultCode code = CheckConfigVersion(options_.configFile, options_.configDocument);
        code != ResultCode::Ok) {
        return code;
    }
    if (const ResultCode code = SetUpCollector(); code != ResultCode::Ok) {
        return code;
    }
    // Case-sensitive, unlike the test that chooses the standard folder. Deliberate quirk: a
    // catalogue named "Base" goes to that folder but gets no runtime.conf.
    if (options_.outputName == kMainCatalogueName) {
        return MakeRuntimeConfiguration();
    }
    return ResultCode::Ok;
}

ResultCode CatalogueBuilder::FindFiles() {
    collector_.AddExcludedPath(paths_.CertificateCopyPath());
    if (const ResultCode code = collector_.CollectFiles(kWholeDirectory, kEveryFilePattern, files_);
        code != ResultCode::Ok) {
        return code;
    }
    return converter_.RequireSound();
}

ResultCode CatalogueBuilder::MakeCatalogue() {
    const AliasMap aliases = WideAliases(collector_.Config().pathAliases);
    if (const ResultCode code = converter_.RequireSound(); code != ResultCode::Ok) {
        return code;
    }
    if (files_.empty()) {
        Log(LogLevel::Error, kEmptyCatalogueText);
        return ResultCode::CatalogueError;
    }
    return CreateCatalogueFile(paths_, options_.signingMaterial, catalogue_, std::move(files_),
                               aliases);
}

// Only the collected files show whether a name needs a converter. They are collected after
// runtime.conf is written, because it may be one of them. Where a converter is missing, they are
// collected once before as well, so that runtime.conf is not written for a run that must fail.
ResultCode CatalogueBuilder::RequireConvertibleNames() const {
    if (heldConverters_.AreComplete()) {
        return ResultCode::Ok;
    }
    std::vector<FoundFile> files;
    if (const ResultCode code = collector_.CollectFiles(kWholeDirectory, kEveryFilePattern, files);
        code != ResultCode::Ok) {
        return code;
    }
    // The same conversions that making the catalogue needs.
    static_cast<void>(WideToUtf8(Utf8ToWide(paths_.CataloguePath())));
    static_cast<void>(WideAliases(collector_.Config().pathAliases));
    for (const FoundFile& file : files) {
        static_cast<void>(WideToUtf8(file.path));
        static_cast<void>(Utf16ToWide(WideToUtf16(file.path)));
    }
    return converter_.RequireSound();
}

// The patterns are expanded in the game directory, so the change into it comes first.
ResultCode CatalogueBuilder::SetUpCollector() {
    std::string sectionName = kSearchSection;
    const ResultCode code =
        collector_.ApplyCatalogueRules(options_.configDocument.GetSection(sectionName));
    if (code != ResultCode::Ok) {
        return code;
    }
    if (chdir(collector_.BasePath().c_str()) != 0) {
        return ResultCode::InitFailedWorkingDirectory;
    }
    if (const ResultCode resolved = collector_.ResolvePaths(); resolved != ResultCode::Ok) {
        return resolved;
    }
    if (GetFileType(collector_.BasePath() + programName_) != FileType::Missing) {
        Log(LogLevel::Warning,
            "It is not recommended to run the sealkeeper from the target directory! The tool itself must not be distributed to end-users!\n");
    }
    return ResultCode::Ok;
}

ResultCode CatalogueBuilder::MakeRuntimeConfiguration() {
    if (!options_.gameDevMode &&
        !CheckCertificateTrust(BuiltInTrustMaterial(), options_.signingMaterial.certificate,
                               options_.productId)) {
        // A certificate of the game itself was trusted when it was loaded. If it no longer is, the
        // check itself failed.
        if (!IsFromAnotherIssuer(BuiltInTrustMaterial(), options_.signingMaterial.certificate)) {
            return ResultCode::MbedTlsX509VerifyFailed;
        }
        Log(LogLevel::Info,
            "Will not generate a configuration file as the provided certificate is for a mod.\n");
        return ResultCode::Ok;
    }
    if (const ResultCode code = RequireConvertibleNames(); code != ResultCode::Ok) {
        return code;
    }
    EndConsoleLine();
    Log(LogLevel::Info, "=======================================\n");
    if (!LoadRuntimeSettings(options_.runtimeConfiguration, options_.configDocument)) {
        return ResultCode::InitFailedConfig;
    }
    const ResultCode code = WriteRuntimeConfiguration(options_.runtimeConfiguration,
                                                      options_.signingMaterial.privateKey.Get(),
                                                      paths_.outputDirectory);
    if (code != ResultCode::Ok) {
        return code;
    }
    Log(LogLevel::Info, "=======================================\n\n");
    return ResultCode::Ok;
}

}  // namespace sealkeeper
