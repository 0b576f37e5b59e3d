// A terminal in place of one of the process's own descriptors, and the environment that tells of
// it.
#ifndef SEALKEEPER_TESTS_INSPECT_REPORT_SCOPED_TERMINAL_H
#define SEALKEEPER_TESTS_INSPECT_REPORT_SCOPED_TERMINAL_H

#include <optional>
#include <string>

namespace sealkeeper::test {

// Until its end, `descriptor` is a terminal.
class ScopedTerminal {
  public:
    explicit ScopedTerminal(int descriptor);
    ScopedTerminal(const ScopedTerminal&) = delete;
    ScopedTerminal& operator=(const ScopedTerminal&) = delete;
    ~ScopedTerminal();

    void SetColumns(unsigned short columns);

    // What was written to it, a few kilobytes at most; a line feed is "\r\n" there. Once.
    [[nodiscard]] std::string Written();

  private:
    int descriptor_;
    int saved_ = -1;
    // The other end.
    int master_ = -1;
};

// Until its end, an environment variable has that value; or none.
class ScopedVariable {
  public:
    ScopedVariable(const char* name, std::optional<std::string> value);
    ScopedVariable(const ScopedVariable&) = delete;
    ScopedVariable& operator=(const ScopedVariable&) = delete;
    ~ScopedVariable();

  private:
    const char* name_;
    std::optional<std::string> saved_;
};

}  // namespace sealkeeper::test

#endif
