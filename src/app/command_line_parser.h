// Turns the command line into the options record and chooses the action.
#ifndef SEALKEEPER_APP_COMMAND_LINE_PARSER_H
#define SEALKEEPER_APP_COMMAND_LINE_PARSER_H

#include "app/command_line_options.h"
#include "app/result_code.h"

namespace sealkeeper {

// `Ok` when the run may go on with `options.action`, which stays `None` after help and version;
// `SealkeeperUsageError`, after saying why where the usage text alone does not, for every faulty
// command line.
ResultCode ParseCommandLine(CommandLineOptions& options, int argc, const char* const* argv);

}  // namespace sealkeeper

#endif
