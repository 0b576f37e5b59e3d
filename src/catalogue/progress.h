// The dots that show a person that hashing goes on.
#ifndef SEALKEEPER_CATALOGUE_PROGRESS_H
#define SEALKEEPER_CATALOGUE_PROGRESS_H

namespace sealkeeper {

// Writes a dot when more than half a second has gone by since the last one, or since the first
// call; with `final` it also ends the console line. Dots carry no tag and are not flushed.
void ProgressTick(bool final);

}  // namespace sealkeeper

#endif
