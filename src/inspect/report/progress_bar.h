// A progress line for long runs on a terminal.
#ifndef SEALKEEPER_INSPECT_REPORT_PROGRESS_BAR_H
#define SEALKEEPER_INSPECT_REPORT_PROGRESS_BAR_H

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>

namespace sealkeeper {

// The progress of a run.
struct Progress {
    std::uint64_t doneBytes = 0;
    std::uint64_t totalBytes = 0;
    std::chrono::duration<double> elapsed{};
};

// The bar, the percentage, the rate and the time left: "[=====>    ]  52 %  412.3 MB/s  1:03 left".
// The rate is the average so far; without one, no time left is shown. The line is shorter than
// `columns`, so that it never wraps. In a narrow terminal the bar shrinks first. Then the rate and
// the time left are dropped, then the bar, then everything.
[[nodiscard]] std::string ProgressLine(const Progress& progress, std::size_t columns);

// Draws the line on standard error, at most ten times a second, if that is a terminal that is not
// dumb. Standard output is left to the report. The destructor erases the line.
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
