#include "app/command_line_options.h"

namespace sealkeeper {

CommandLineOptions& GetCommandLineOptions() {
    static CommandLineOptions options;
    return options;
}

}  // namespace sealkeeper
