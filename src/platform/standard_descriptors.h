// The three descriptors that every process is expected to start with.
#ifndef SEALKEEPER_PLATFORM_STANDARD_DESCRIPTORS_H
#define SEALKEEPER_PLATFORM_STANDARD_DESCRIPTORS_H

namespace sealkeeper {

// Opens the null device for each of standard input, output and error that the process was started
// without. Otherwise the next file opened would take the free number, and console output would go
// into that file.
void OpenMissingStandardDescriptors();

}  // namespace sealkeeper

#endif
