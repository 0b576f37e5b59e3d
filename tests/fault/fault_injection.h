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
    // Does not fail, but changes the first byte read.
    FreadBytes,
    // Reading a chunk, counted at its first byte. The second one also changes that byte.
    ReadChunk,
    ReadChunkBytes,
    // Do not fail, but are interrupted by a signal or deliver fewer bytes.
    ReadInterrupted,
    ReadShort,
    // Read-ahead advice.
    Advise,
    // Fails after writing half of the bytes.
    Write,
    // Do not fail, but are interrupted by a signal or accept fewer bytes.
    WriteInterrupted,
    WriteShort,
    Fsync,
    Fchown,
    Fchmod,
    // Closing a file opened for writing only. It is closed all the same.
    CloseWritten,
    Rename,
    Opendir,
    Readdir,
    // Does not fail, but leaves the type of the entry unknown.
    ReaddirTypes,
    Lstat,
    Fnmatch,
    // Does not fail, but reports another number of processors.
    Affinity,
    // The same call, failing.
    AffinityFailure,
    // Does not fail, but reports another time, `value` in seconds.
    Time,
    SeedGenerator,
    // Parsing a certificate. It is parsed all the same.
    ParseCertificate,
    // Checking a certificate chain.
    VerifyChain,
    // Signing a digest. It is signed all the same.
    Sign,
    // The digest is computed all the same if there is one.
    Sha256,
    StartThread,
    Allocation,
    Count
};

// Arms a fault while it exists.
class ScopedFault {
  public:
    // Calls count from 0, from now on. Call `firstFailing` fails, and by default all later calls:
    // `Reach::Once` is that call alone, `Reach::Twice` that and the next, `Reach::EveryOther` every
    // second one. `value` says how a call fails where that may differ. For `iconv`, `opendir`,
    // `readdir`, `lstat` and the failures of `stat` and `fstat` it is the errno; for calls on
    // output files too, unless it is 0. For `fnmatch` and the check of a chain it is the result.
    // For `stat` and `fstat` it is the size to report. For `fread`, `ReadShort` and `WriteShort` it
    // is the number of bytes.
    enum class Reach { Onwards, Once, Twice, EveryOther };
    explicit ScopedFault(Call call, std::size_t firstFailing = 0, Reach reach = Reach::Onwards,
                         int value = 0);
    ScopedFault(const ScopedFault&) = delete;
    ScopedFault& operator=(const ScopedFault&) = delete;
    ~ScopedFault();

    // Whether the fault has struck.
    [[nodiscard]] bool Struck() const;
    // Disarms the fault early.
    void Disarm();

  private:
    Call call_;
};

// The number of calls since the last `ResetCallCount`.
[[nodiscard]] std::size_t CallCount(Call call);
void ResetCallCount(Call call);

// The largest allocation in bytes since the last `ResetLargestAllocation`.
[[nodiscard]] std::size_t LargestAllocation();
void ResetLargestAllocation();

struct MemoryRange {
    const void* start = nullptr;
    std::size_t bytes = 0;
};

// The memory for which large pages were last requested; empty on systems without such requests.
[[nodiscard]] MemoryRange LastLargePages();

}  // namespace sealkeeper::test

#endif
