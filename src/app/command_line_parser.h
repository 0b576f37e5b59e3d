// Turns the command line into the options record and chooses the action.
#ifndef SEALKEEPER_APP_COMMAND_LINE_PARSER_H
#define SEALKEEPER_APP_COMMAND_LINE_PARSER_H

#include "app/command_line_options.h"
#include "app/result_code.h"

namespace sealkeeper {

// Fills `options`. Returns `Ok` when the run may go on with `options.action`, which stays `None`
// after help and version. Any invalid command line gives `SealkeeperUsageError`, after the usage
// text, a message, or both.
ResultCode ParseCommandLine(CommandLineOptions& options, int argc, const char* const* argv);

}  // namespace sealkeeper

#endif
