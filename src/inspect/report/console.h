// Output for people: the report on standard output, failures on standard error.
#ifndef SEALKEEPER_INSPECT_REPORT_CONSOLE_H
#define SEALKEEPER_INSPECT_REPORT_CONSOLE_H

#include <string>
#include <string_view>

namespace sealkeeper {

enum class Style { Plain, Strong, Faint, Good, Warning, Bad };

class Console {
  public:
    // Colours standard output if it is a terminal that is not dumb, unless NO_COLOR is set and not
    // empty (no-color.org).
    Console();

    // Writes `text` to standard output unchanged. `Finish` reports failures.
    void Write(std::string_view text);

    // Ends the report. Returns false, with the reason on standard error, if part of it could not be
    // written. It is no failure if the reader of a pipe, such as `head`, takes only the beginning.
    [[nodiscard]] bool Finish();

    // Untrusted text for standard output: `TerminalSafeText` if that is a terminal, else unchanged.
    [[nodiscard]] std::string Foreign(std::string_view text) const;

    // `text` in the colour of `style`; unchanged if colour is off.
    [[nodiscard]] std::string Styled(Style style, std::string_view text) const;

    // Writes the line "sealkeeper-inspect: " and `message` to standard error, as `TerminalSafeText`
    // if that is a terminal. `message` has no line feed.
    void Fail(std::string_view message);

  private:
    bool isOutputTerminal_;
    bool isErrorTerminal_;
    bool hasColour_;
    // The errno of the first failed write; 0 if none failed.
    int writeError_ = 0;
};

}  // namespace sealkeeper

#endif
