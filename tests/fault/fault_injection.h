// Failing system and library calls. The test executable defines its own versions of some functions
// (interposed_*.cpp), which the code under test, linked statically, then calls. Each forwards to
// the real function until a test arms a fault for it.
#ifndef SEALKEEPER_TESTS_FAULT_FAULT_INJECTION_H
#define SEALKEEPER_TESTS_FAULT_FAULT_INJECTION_H

#include <cstddef>

namespace sealkeeper::test {

enum class Call {
    IconvOpen,
    Iconv,
    GetCwd,
    Chdir,
    Stat,
    StatFailure,
    Fstat,
    FstatFailure,
    Open,
    Fdopen,
    Fseeko,
    Fread,
    // Not failing, but with the first byte read changed.
    FreadBytes,
    // The reading of a chunk, counted at its first byte, and the same with that byte changed.
    ReadChunk,
    ReadChunkBytes,
    // Not failing, but interrupted by a signal, or delivering no more than some bytes.
    ReadInterrupted,
    ReadShort,
    // The advice that bytes will be read.
    Advise,
    // Half of the bytes are written before it fails.
    Write,
    // Not failing, but interrupted by a signal, or taking no more than some bytes.
    WriteInterrupted,
    WriteShort,
    Fsync,
    Fchown,
    Fchmod,
    // The closing of a file that is open for writing alone. It is closed all the same.
    CloseWritten,
    Rename,
    Opendir,
    Readdir,
    // Not failing, but with the entry's type unknown.
    ReaddirTypes,
    Lstat,
    Fnmatch,
    // Not failing, but telling that the process may run on another number of processors.
    Affinity,
    // The same question.
    AffinityFailure,
    // Not failing, but telling another time, `value` in seconds.
    Time,
    SeedGenerator,
    // The parsing of a certificate, which is parsed all the same.
    ParseCertificate,
    // The check of a chain of certificates.
    VerifyChain,
    // The signing of a digest, which is signed all the same.
    Sign,
    // The digest is made all the same where there is one to make.
    Sha256,
    StartThread,
    Allocation,
    Count
};

// Arms one fault from its construction to its end.
class ScopedFault {
  public:
    // The call number `firstFailing` fails, counted from 0 and from now, and so do those after it;
    // only that one with `Reach::Once`, that and the next with `Reach::Twice`, and every second of
    // them with `Reach::EveryOther`. `value` is what the call fails with where that may differ: the
    // errno of `iconv`, `opendir`, `readdir`, `lstat` and the failures of `stat` and `fstat`, the
    // result of `fnmatch` and of the check of a chain, the size that `stat` or `fstat` reports, the
    // bytes that `fread` and `ReadShort` deliver and `WriteShort` takes; and the errno of the calls
    // on output files, if it is not 0.
    enum class Reach { Onwards, Once, Twice, EveryOther };
    explicit ScopedFault(Call call, std::size_t firstFailing = 0, Reach reach = Reach::Onwards,
                         int value = 0);
    ScopedFault(const ScopedFault&) = delete;
    ScopedFault& operator=(const ScopedFault&) = delete;
    ~ScopedFault();

    // Whether the fault struck.
    [[nodiscard]] bool Struck() const;
    // Takes the fault back early.
    void Disarm();

  private:
    Call call_;
};

// How often a function was called since the last `ResetCallCount`.
[[nodiscard]] std::size_t CallCount(Call call);
void ResetCallCount(Call call);

// The bytes of the largest allocation since the last `ResetLargestAllocation`.
[[nodiscard]] std::size_t LargestAllocation();
void ResetLargestAllocation();

struct MemoryRange {
    const void* start = nullptr;
    std::size_t bytes = 0;
};

// The memory that large pages were last asked for; none where the system has no such wish.
[[nodiscard]] MemoryRange LastLargePages();

}  // namespace sealkeeper::test

#endif
