// The signals that failed output sends.
#ifndef SEALKEEPER_PLATFORM_OUTPUT_SIGNALS_H
#define SEALKEEPER_PLATFORM_OUTPUT_SIGNALS_H

namespace sealkeeper {

// From now on, writing to a pipe without a reader (SIGPIPE) or past the file size limit (SIGXFSZ)
// fails with an error and does not end the process: a lost console must not stop the work.
void IgnoreOutputSignals();

}  // namespace sealkeeper

#endif
