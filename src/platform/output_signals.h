// The signals that a failing output sends.
#ifndef SEALKEEPER_PLATFORM_OUTPUT_SIGNALS_H
#define SEALKEEPER_PLATFORM_OUTPUT_SIGNALS_H

namespace sealkeeper {

// From now on, writing to a pipe that nobody reads (SIGPIPE) and past the process's limit of file
// sizes (SIGXFSZ) fails as other writing does and does not end the process: a console that is gone
// must not keep the program from its work.
void IgnoreOutputSignals();

}  // namespace sealkeeper

#endif
