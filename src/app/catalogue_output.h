// Writes a run's catalogue to its place.
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

// Makes the catalogue of `files` at `paths`; see `HashCatalogue::CreateCatalogue`. An output path
// that is not valid UTF-8 has no wide form; it is rejected like one that cannot be opened, before
// anything is hashed. So is, with `CatalogueError`, one that the system fails to convert.
ResultCode CreateCatalogueFile(const GeneratePaths& paths, SigningMaterial& material,
                               HashCatalogue& catalogue, std::vector<FoundFile> files,
                               const AliasMap& aliases);

}  // namespace sealkeeper

#endif
