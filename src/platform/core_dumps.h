// What a crash of the process leaves behind.
#ifndef SEALKEEPER_PLATFORM_CORE_DUMPS_H
#define SEALKEEPER_PLATFORM_CORE_DUMPS_H

namespace sealkeeper {

// From now on, a crash writes no core file, which would hold what is in memory. A system that hands
// core dumps to another program tells that program so.
void SwitchOffCoreDumps();

}  // namespace sealkeeper

#endif
