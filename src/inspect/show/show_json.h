// What `show --json` prints.
#ifndef SEALKEEPER_INSPECT_SHOW_SHOW_JSON_H
#define SEALKEEPER_INSPECT_SHOW_SHOW_JSON_H

#include <string>

#include "inspect/report/console.h"
#include "inspect/show/read_file.h"
#include "inspect/show/show_options.h"

namespace sealkeeper {

// Writes the report on `file`. Entries of a valid catalogue are written one at a time.
void WriteShowJson(const FileToShow& file, const ShowOptions& options, Console& console);

// Writes why the file at `path` cannot be shown.
void WriteShowFailureJson(const std::string& path, const std::string& failure, Console& console);

}  // namespace sealkeeper

#endif
