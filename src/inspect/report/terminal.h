// What the terminal can do.
#ifndef SEALKEEPER_INSPECT_REPORT_TERMINAL_H
#define SEALKEEPER_INSPECT_REPORT_TERMINAL_H

#include <cstddef>

namespace sealkeeper {

// Whether the terminal, by TERM, knows no control sequences, or nothing is known of it.
[[nodiscard]] bool IsDumbTerminal();

// How many characters a line of the terminal at `descriptor` has: COLUMNS, where that is a number
// above 0; else what the system tells; else 80.
[[nodiscard]] std::size_t TerminalColumns(int descriptor);

}  // namespace sealkeeper

#endif
