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
#include "platform/converter_watch.h"
#include "platform/found_file.h"
#include "platform/text_converter.h"

namespace sealkeeper {

// Said where the rules leave no file.
inline constexpr const char* kEmptyCatalogueText =
    "Cannot create an empty catalogue, at least all executables and libraries must be included.";

class CatalogueBuilder {
  public:
    // `gameDirectory` is absolute and ends in '/'. All references must outlive the builder.
    CatalogueBuilder(CommandLineOptions& options, const GeneratePaths& paths,
                     const std::string& gameDirectory, HashCatalogue& catalogue);

    // Reads the configuration file, changes into the game directory, resolves the configured paths
    // there, and writes runtime.conf where one belongs to the run. The first failure is returned;
    // with `CatalogueError`, logged, runtime.conf is not written because the system cannot convert
    // what goes into the catalogue.
    ResultCode Prepare();

    // Collects the files of the game. Only after a successful `Prepare`. Fails with
    // `CatalogueError`, logged, when the system fails to convert a name, else as the collector
    // does.
    ResultCode FindFiles();

    // Writes the catalogue of the files that were found. Fails with `CatalogueError`, logged, when
    // there is none or the system fails to convert a text.
    ResultCode MakeCatalogue();

  private:
    ResultCode SetUpCollector();
    ResultCode RequireConvertibleNames() const;
    ResultCode MakeRuntimeConfiguration();

    CommandLineOptions& options_;
    const GeneratePaths& paths_;
    HashCatalogue& catalogue_;
    std::string programName_;
    FileCollector collector_;
    std::vector<FoundFile> files_;
    // Opened before anything is written.
    HeldConverters heldConverters_;
    ConverterWatch converter_;
};

}  // namespace sealkeeper

#endif
