// The values of the command line, and what the actions load from the files that it names.
#ifndef SEALKEEPER_APP_COMMAND_LINE_OPTIONS_H
#define SEALKEEPER_APP_COMMAND_LINE_OPTIONS_H

#include <cstddef>
#include <cstdint>
#include <string>

#include "config/config_document.h"
#include "runtime/runtime_configuration.h"
#include "runtime/signing_material.h"

namespace sealkeeper {

enum class ActionKind : std::uint32_t {
    // Help or version was printed.
    None = 0,
    Generate = 1,
    List = 2,
    Verify = 3,
};

// The output name of a game's main catalogue. Any other name is for a mod.
inline constexpr const char* kMainCatalogueName = "base";

struct CommandLineOptions {
    ActionKind action = ActionKind::None;
    std::string privateKeyFile = "base_private.key";
    std::string certificateFile = "base_public.cer";
    std::string configFile = "anticheat_sealkeeper.cfg";
    bool gameDevMode = false;
    std::string outputName = kMainCatalogueName;
    std::string crlFile;
    std::string targetFile;
    std::string targetGameDir;
    // As given while parsing; absolute once the command line is validated.
    std::string listPath;
    // Likewise; ends in '/' once the command line is validated.
    std::string verifyDir;
    std::string productId;
    // How many threads hash. 1 means the main thread; no other is started.
    std::size_t jobs = 1;
    std::string programPath;

    SigningMaterial signingMaterial;
    ConfigDocument configDocument;
    RuntimeConfiguration runtimeConfiguration;
};

// The one record of the process, created on first use.
[[nodiscard]] CommandLineOptions& GetCommandLineOptions();

}  // namespace sealkeeper

#endif
