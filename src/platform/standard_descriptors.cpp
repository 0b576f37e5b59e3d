#include "platform/standard_descriptors.h"

#include <fcntl.h>
#include <unistd.h>

#include <initializer_list>

namespace sealkeeper {

void OpenMissingStandardDescriptors() {
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (fcntl(descriptor, F_GETFD) == -1) {
            // POSIX returns the lowest free number, which is this one. Stays open for the whole
            // run.
            static_cast<void>(open("/dev/null", O_RDWR));
        }
    }
}

}  // namespace sealkeeper
