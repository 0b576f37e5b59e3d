// Makes a catalogue, and for a game runtime.conf, by the rules of a configuration file.
#ifndef SEALKEEPER_APP_CATALOGUE_BUILDER_H
#define SEALKEEPER_APP_CATALOGUE_BUILDER_H

#include <string>
#include <vector>

#include "app/command_line_options.h"
#include "app/generate_paths.h"
#include "app/result_code.h"
#include "catalogue/hash_catalogue.h"
#include "config/file_collector.h"
#include "platform/found_file.h"

namespace sealkeeper {

class CatalogueBuilder {
  public:
    // `gameDirectory` is absolute and ends in '/'. All references must outlive the builder.
    CatalogueBuilder(CommandLineOptions& options, const GeneratePaths& paths,
                     const std::string& gameDirectory, HashCatalogue& catalogue);

    // Reads the configuration file, changes into the game directory, resolves the configured paths
    // there, and writes runtime.conf where one belongs to the run. The first failure is returned.
    ResultCode Prepare();

    // Collects the files of the game. Only after a successful `Prepare`.
    ResultCode FindFiles();

    // Writes the catalogue of the files that were found.
    ResultCode MakeCatalogue();

  private:
    ResultCode SetUpCollector();
    ResultCode MakeRuntimeConfiguration();

    CommandLineOptions& options_;
    const GeneratePaths& paths_;
    HashCatalogue& catalogue_;
    std::string programName_;
    FileCollector collector_;
    std::vector<FoundFile> files_;
};

}  // namespace sealkeeper

#endif
