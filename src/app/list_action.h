// Shows what a generated file holds: the paths in a hash catalogue or the settings in runtime.conf.
#ifndef SEALKEEPER_APP_LIST_ACTION_H
#define SEALKEEPER_APP_LIST_ACTION_H

#include "app/command_line_options.h"
#include "app/result_code.h"

namespace sealkeeper {

// Lists the file at `options.listPath`; its content tells which kind it is. No signature is
// checked. Fails with `CatalogueIOError`, logged, when the file cannot be read; with `FileInvalid`,
// deliberately without a message, when it is too short for either kind; as the reader of its kind
// does; and with `CatalogueError`, logged, at the first path that the system fails to convert. The
// settings of a runtime.conf are left in `options.runtimeConfiguration`.
ResultCode RunListAction(CommandLineOptions& options);

}  // namespace sealkeeper

#endif
