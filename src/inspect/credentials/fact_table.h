// Report lines with a label and a value, the values aligned.
#ifndef SEALKEEPER_INSPECT_CREDENTIALS_FACT_TABLE_H
#define SEALKEEPER_INSPECT_CREDENTIALS_FACT_TABLE_H

#include <string>
#include <string_view>

#include "inspect/report/console.h"

namespace sealkeeper {

class FactTable {
  public:
    explicit FactTable(const Console& console) : console_(console) {}

    // Begins a section of the report. Its first line is `title` and `subject`, such as a path.
    void Begin(std::string_view title, std::string_view subject);

    // Adds a line to the section. `value` is untrusted text.
    void Add(const char* label, std::string_view value);

    // As above, in a style.
    void Add(const char* label, Style style, std::string_view value);

    // The whole text. Each section is followed by an empty line.
    [[nodiscard]] std::string Text() const;

  private:
    const Console& console_;
    std::string text_;
};

}  // namespace sealkeeper

#endif
