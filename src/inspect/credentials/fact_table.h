// Lines of a report, each a label and a value, the values aligned.
#ifndef SEALKEEPER_INSPECT_CREDENTIALS_FACT_TABLE_H
#define SEALKEEPER_INSPECT_CREDENTIALS_FACT_TABLE_H

#include <string>
#include <string_view>

#include "inspect/report/console.h"

namespace sealkeeper {

class FactTable {
  public:
    explicit FactTable(const Console& console) : console_(console) {}

    // Begins a part of the report. `title` and `subject`, such as a path, make its first line.
    void Begin(std::string_view title, std::string_view subject);

    // Adds a line to the part. `value` is not the program's own.
    void Add(const char* label, std::string_view value);

    // The same, in a style.
    void Add(const char* label, Style style, std::string_view value);

    // All of it, each line with its line feed, and an empty line after each part.
    [[nodiscard]] std::string Text() const;

  private:
    const Console& console_;
    std::string text_;
};

}  // namespace sealkeeper

#endif
