// What a person sees: the report on standard output, and what went wrong on standard error.
#ifndef SEALKEEPER_INSPECT_REPORT_CONSOLE_H
#define SEALKEEPER_INSPECT_REPORT_CONSOLE_H

#include <string>
#include <string_view>

namespace sealkeeper {

enum class Style { Plain, Strong, Faint, Good, Warning, Bad };

class Console {
  public:
    // Colours standard output where it is a terminal, unless NO_COLOR is set and not empty
    // (no-color.org) or the terminal is a dumb one.
    Console();

    // Writes `text` to standard output as it stands. A failure is told by `Finish`.
    void Write(std::string_view text);

    // Ends the report. Returns false, with the reason on standard error, when not all of it could
    // be written; true, in silence, where nobody wants to read on, as in `… | head`.
    [[nodiscard]] bool Finish();

    // What is not the program's own, as it goes into a text for standard output: where that is a
    // terminal, as `TerminalSafeText`.
    [[nodiscard]] std::string Foreign(std::string_view text) const;

    // `text` in the colour of `style`, where there is colour.
    [[nodiscard]] std::string Styled(Style style, std::string_view text) const;

    // Writes a line "sealkeeper-inspect: " and `message`, which has no line feed, to standard
    // error; where that is a terminal, as `TerminalSafeText`.
    void Fail(std::string_view message);

  private:
    bool isOutputTerminal_;
    bool isErrorTerminal_;
    bool hasColour_;
    // The errno of the first write that failed; 0 where none did.
    int writeError_ = 0;
};

}  // namespace sealkeeper

#endif
