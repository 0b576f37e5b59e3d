// Core dumps of this process.
#ifndef SEALKEEPER_PLATFORM_CORE_DUMPS_H
#define SEALKEEPER_PLATFORM_CORE_DUMPS_H

namespace sealkeeper {

// From now on, a crash writes no core file, which would contain what is in memory. Best effort. A
// system that pipes core dumps into a program passes this limit on to that program.
void SwitchOffCoreDumps();

}  // namespace sealkeeper

#endif
