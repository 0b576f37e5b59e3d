// Makes a catalogue by the rules of a configuration file and, for a game, runtime.conf.
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

// Logged when the rules leave no file.
inline constexpr const char* kEmptyCatalogueText =
    "Cannot create an empty catalogue, at least all executables and libraries must be included.";

class CatalogueBuilder {
  public:
    // `gameDirectory` is absolute and ends in '/'. All references must outlive the builder.
    CatalogueBuilder(CommandLineOptions& options, const GeneratePaths& paths,
                     const std::string& gameDirectory, HashCatalogue& catalogue);

    // Reads the configuration file, changes into the game directory, resolves the configured paths
    // there, and writes runtime.conf if this run makes one. Returns the first failure.
    // `CatalogueError`, logged, means that the system cannot convert what goes into the catalogue;
    // runtime.conf is not written then.
    ResultCode Prepare();

    // Collects the files of the game. Only after a successful `Prepare`. Fails with
    // `CatalogueError`, logged, when the system fails to convert a name, and as
    // `FileCollector::CollectFiles` does.
    ResultCode FindFiles();

    // Writes the catalogue of the files that were found. Fails with `CatalogueError`, logged, when
    // there are none or the system fails to convert a text, and as `HashCatalogue::CreateCatalogue`
    // does.
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
