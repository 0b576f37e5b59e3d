// A line on a terminal that tells how far a long run has come.
#ifndef SEALKEEPER_INSPECT_REPORT_PROGRESS_BAR_H
#define SEALKEEPER_INSPECT_REPORT_PROGRESS_BAR_H

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>

namespace sealkeeper {

// How far a run has come.
struct Progress {
    std::uint64_t doneBytes = 0;
    std::uint64_t totalBytes = 0;
    std::chrono::duration<double> elapsed{};
};

// Bar, share, rate and time left, as in "[=====>    ]  52 %  412.3 MB/s  1:03 left". The rate is
// the average so far; without one there is no time left to tell. The line has fewer characters than
// `columns`, so that no terminal of that width wraps it: the bar shrinks first, then rate and time
// left go, then the bar, and then all.
[[nodiscard]] std::string ProgressLine(const Progress& progress, std::size_t columns);

// Draws the line on standard error where that is a terminal, and no dumb one, so that standard
// output has the report alone, at most ten times a second. The line is gone when the bar is.
class ProgressBar {
  public:
    explicit ProgressBar(std::uint64_t totalBytes);
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;
    ~ProgressBar();

    void Advance(std::uint64_t bytes);

  private:
    using Clock = std::chrono::steady_clock;

    bool isShown_;
    bool isDrawn_ = false;
    Progress progress_;
    Clock::time_point start_;
    Clock::time_point nextDrawing_;
};

}  // namespace sealkeeper

#endif
