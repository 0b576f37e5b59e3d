// Writes the catalogue of a run to its output path.
#ifndef SEALKEEPER_APP_CATALOGUE_OUTPUT_H
#define SEALKEEPER_APP_CATALOGUE_OUTPUT_H

#include <string>
#include <vector>

#include "app/generate_paths.h"
#include "app/result_code.h"
#include "catalogue/hash_catalogue.h"
#include "platform/found_file.h"
#include "runtime/signing_material.h"

namespace sealkeeper {

// Makes the catalogue of `files` at `paths`; see `HashCatalogue::CreateCatalogue`. The output path
// is converted before anything is hashed. One that is not valid UTF-8 fails like one that cannot be
// opened, with `CatalogueIOError`, logged. One that the system fails to convert fails with
// `CatalogueError`, logged.
ResultCode CreateCatalogueFile(const GeneratePaths& paths, SigningMaterial& material,
                               HashCatalogue& catalogue, std::vector<FoundFile> files,
                               const AliasMap& aliases);

}  // namespace sealkeeper

#endif
