// Capabilities of the terminal.
#ifndef SEALKEEPER_INSPECT_REPORT_TERMINAL_H
#define SEALKEEPER_INSPECT_REPORT_TERMINAL_H

#include <cstddef>

namespace sealkeeper {

// Whether TERM is unset or "dumb": the terminal may not know control sequences.
[[nodiscard]] bool IsDumbTerminal();

// The width of the terminal at `descriptor` in characters: COLUMNS if it is a number above 0, else
// what the system reports, else 80.
[[nodiscard]] std::size_t TerminalColumns(int descriptor);

}  // namespace sealkeeper

#endif
