// Replaces one of the process's descriptors by a terminal, and sets the environment variables about
// it.
#ifndef SEALKEEPER_TESTS_INSPECT_REPORT_SCOPED_TERMINAL_H
#define SEALKEEPER_TESTS_INSPECT_REPORT_SCOPED_TERMINAL_H

#include <optional>
#include <string>

namespace sealkeeper::test {

// Makes `descriptor` a terminal while it exists.
class ScopedTerminal {
  public:
    explicit ScopedTerminal(int descriptor);
    ScopedTerminal(const ScopedTerminal&) = delete;
    ScopedTerminal& operator=(const ScopedTerminal&) = delete;
    ~ScopedTerminal();

    void SetColumns(unsigned short columns);

    // What was written to it since the last call, a few kilobytes at most. Each line feed becomes
    // "\r\n".
    [[nodiscard]] std::string Written();

  private:
    int descriptor_;
    int saved_ = -1;
    // The other end.
    int master_ = -1;
};

// Sets an environment variable, or removes it, while it exists.
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
