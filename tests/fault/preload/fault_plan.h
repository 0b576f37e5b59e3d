// The calls of a whole program's functions: counted, and one of them failed. This library is loaded
// before the program (LD_PRELOAD), so that its functions are called in place of the real ones. What
// it does is told by the environment:
//
//   SEALKEEPER_FAULT         FUNCTION:CALL:REACH:KIND:VALUE, for example "open:3:once:fail:13".
//                            CALL counts from 1; REACH is "once" or "onwards"; KIND is "fail" with
//                            an error number, "short" with the bytes delivered, or "wrong", which
//                            delivers all bytes and the first of them changed.
//   SEALKEEPER_FAULT_REPORT  the file that the report is appended to: a line "struck FUNCTION CALL
//                            SUBJECT" when the fault strikes first, with a line "frame MODULE
//                            OFFSET" for each caller, and a line "calls FUNCTION COUNT" for each
//                            function called when the program ends.
//   SEALKEEPER_FAULT_MARK    "1" has it write to no file when the counting begins, a mark for who
//                            traces system calls.
#ifndef SEALKEEPER_TESTS_FAULT_PRELOAD_FAULT_PLAN_H
#define SEALKEEPER_TESTS_FAULT_PRELOAD_FAULT_PLAN_H

#include <atomic>
#include <optional>

namespace sealkeeper::fault {

enum class FaultKind { Fail, Short, Wrong };

struct Fault {
    FaultKind kind = FaultKind::Fail;
    int value = 0;
};

// What a call works on: a path, an open file, or neither.
struct Subject {
    const char* path = nullptr;
    int descriptor = -1;
};

// Counts the calls of one function. Calls before the program's own constructors, and calls from
// this library, do not count.
class CallCounter {
  public:
    constexpr explicit CallCounter(const char* name) : name_(name) {}

    // Counts a call and returns the fault for it, almost always none.
    std::optional<Fault> Next(const Subject& subject) noexcept;

  private:
    friend void ReportCalls() noexcept;

    const char* name_;
    std::atomic<unsigned> calls_ = 0;
    // Links all functions that were called.
    CallCounter* nextCalled_ = nullptr;
};

}  // namespace sealkeeper::fault

#endif
