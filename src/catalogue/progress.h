// The dots that show a person that hashing goes on.
#ifndef SEALKEEPER_CATALOGUE_PROGRESS_H
#define SEALKEEPER_CATALOGUE_PROGRESS_H

namespace sealkeeper {

// Writes a dot when more than half a second has gone by since the last one, or since the first
// call; with `final` it also ends the console line. Dots carry no tag and are not flushed.
void ProgressTick(bool final);

// Told of each tick, in the thread of `main`.
using TickListener = void (*)(void* context);

// From now on `listener` is called in place of writing dots, with `context`. Null gives that back.
void SendTicksTo(TickListener listener, void* context);

}  // namespace sealkeeper

#endif
