#include "platform/output_signals.h"

#include <csignal>
#include <initializer_list>

namespace sealkeeper {

void IgnoreOutputSignals() {
    for (const int number : {SIGPIPE, SIGXFSZ}) {
        // Fails only for signals that do not exist.
        static_cast<void>(std::signal(number, SIG_IGN));
    }
}

}  // namespace sealkeeper
