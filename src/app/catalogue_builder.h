// Makes a catalogue, and for a game runtime.conf, by the rules of a configuration file.
#ifndef SEALKEEPER_APP_CATALOGUE_BUILDER_H
#define SEALKEEPER_APP_CATALOGUE_BUILDER_H

#include <string>

#include "app/command_line_options.h"
#include "app/generate_paths.h"
#include "app/result_code.h"
#include "catalogue/hash_catalogue.h"
#include "config/file_collector.h"

namespace sealkeeper {

class CatalogueBuilder {
  public:
    // `gameDirectory` is absolute and ends in '/'. All references must outlive the builder.
    CatalogueBuilder(CommandLineOptions& options, const GeneratePaths& paths,
                     const std::string& gameDirectory, HashCatalogue& catalogue);

    // Reads the configuration file, changes into the game directory, resolves the configured paths
    // there, and writes runtime.conf where one belongs to the run. The first failure is returned.
    ResultCode Prepare();

    // Collects the files and writes the catalogue. Only after a successful `Prepare`.
    ResultCode MakeCatalogue();

  private:
    ResultCode SetUpCollector();
    ResultCode MakeRuntimeConfiguration();

    CommandLineOptions& options_;
    const GeneratePaths& paths_;
    HashCatalogue& catalogue_;
    std::string programName_;
    FileCollector collector_;
};

}  // namespace sealkeeper

#endif
