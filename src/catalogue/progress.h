// The dots that show a person that hashing is in progress.
#ifndef SEALKEEPER_CATALOGUE_PROGRESS_H
#define SEALKEEPER_CATALOGUE_PROGRESS_H

namespace sealkeeper {

// Writes a dot if more than half a second has passed since the last dot or, before that, the first
// call. With `final` it also ends the console line. Dots have no tag and are not flushed.
void ProgressTick(bool final);

// Called for each tick, in the main thread.
using TickListener = void (*)(void* context);

// From now on `listener` is called with `context` instead of writing dots. Null restores the dots.
void SendTicksTo(TickListener listener, void* context);

}  // namespace sealkeeper

#endif
