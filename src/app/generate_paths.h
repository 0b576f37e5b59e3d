// Where a generate run writes its files.
#ifndef SEALKEEPER_APP_GENERATE_PATHS_H
#define SEALKEEPER_APP_GENERATE_PATHS_H

#include <string>

#include "app/command_line_options.h"

namespace sealkeeper {

struct GeneratePaths {
    // The game's main catalogue, named "base" in any letter case, goes to the standard folder.
    bool isMainCatalogue = false;
    // Ends in '/'; empty when the files go to the current directory.
    std::string outputDirectory;
    std::string catalogueName;
    std::string certificateCopyName;

    [[nodiscard]] std::string CataloguePath() const { return outputDirectory + catalogueName; }
    [[nodiscard]] std::string CertificateCopyPath() const {
        return outputDirectory + certificateCopyName;
    }
};

// The output directory is built from the game directory as typed. A relative one is therefore
// resolved against the current directory at the time when a file is written.
[[nodiscard]] GeneratePaths MakeGeneratePaths(const CommandLineOptions& options);

}  // namespace sealkeeper

#endif
