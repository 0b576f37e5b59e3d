#include "inspect/report/progress_bar.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdio>

#include "inspect/report/number_text.h"
#include "inspect/report/terminal.h"

namespace sealkeeper {
namespace {

constexpr std::chrono::milliseconds kDrawingInterval{100};
constexpr std::size_t kWidestBar = 30;
constexpr std::size_t kNarrowestBar = 5;
// Carriage return, then erase in line (ECMA-48, 8.3.41).
constexpr const char* kClearedLine = "\r\x1b[K";

std::string DurationText(std::uint64_t seconds) {
    constexpr std::uint64_t kMinute = 60;
    constexpr std::uint64_t kHour = 60 * kMinute;
    std::array<char, 48> text{};
    const auto hours = static_cast<unsigned long long>(seconds / kHour);
    const auto minutes = static_cast<unsigned>(seconds % kHour / kMinute);
    const auto rest = static_cast<unsigned>(seconds % kMinute);
    if (hours > 0) {
        std::snprintf(text.data(), text.size(), "%llu:%02u:%02u", hours, minutes, rest);
    } else {
        std::snprintf(text.data(), text.size(), "%u:%02u", minutes, rest);
    }
    return text.data();
}

std::string RateAndTimeLeft(const Progress& progress) {
    // In seconds. A rate over a shorter time means nothing, and a longer time left is of no use.
    constexpr double kShortest = 0.2;
    constexpr double kLongest = 1e9;
    const double seconds = progress.elapsed.count();
    if (seconds < kShortest || progress.doneBytes == 0) {
        return {};
    }
    const double rate = static_cast<double>(progress.doneBytes) / seconds;
    const auto bytesLeft = static_cast<double>(progress.totalBytes -
                                               std::min(progress.totalBytes, progress.doneBytes));
    const double secondsLeft = std::min(bytesLeft / rate, kLongest);
    return "  " + SizeText(static_cast<std::uint64_t>(rate)) + "/s  " +
           DurationText(static_cast<std::uint64_t>(std::llround(secondsLeft))) + " left";
}

double ShareDone(const Progress& progress) {
    return progress.totalBytes == 0 ? 1.0
                                    : std::min(1.0, static_cast<double>(progress.doneBytes) /
                                                        static_cast<double>(progress.totalBytes));
}

std::string PercentText(double share) {
    std::array<char, 16> percent{};
    std::snprintf(percent.data(), percent.size(), "%3d %%", static_cast<int>(share * 100));
    return percent.data();
}

std::string BarText(double share, std::size_t width) {
    const auto filled = static_cast<std::size_t>(share * static_cast<double>(width));
    std::string bar(filled, '=');
    if (filled < width) {
        bar += '>';
    }
    bar.resize(width, ' ');
    return "[" + bar + "] ";
}

}  // namespace

std::string ProgressLine(const Progress& progress, std::size_t columns) {
    constexpr std::size_t kBracketsAndBlank = 3;
    const double share = ShareDone(progress);
    const std::string percent = PercentText(share);
    for (const std::string& text : {percent + RateAndTimeLeft(progress), percent}) {
        const std::size_t others = kBracketsAndBlank + text.size();
        if (others + kNarrowestBar < columns) {
            return BarText(share, std::min(kWidestBar, columns - 1 - others)) + text;
        }
    }
    return percent.size() < columns ? percent : "";
}

ProgressBar::ProgressBar(std::uint64_t totalBytes)
    : isShown_(isatty(STDERR_FILENO) == 1 && !IsDumbTerminal()),
      progress_{0, totalBytes, {}},
      start_(Clock::now()),
      nextDrawing_(start_ + kDrawingInterval) {}

ProgressBar::~ProgressBar() {
    if (isDrawn_) {
        std::fputs(kClearedLine, stderr);
    }
}

void ProgressBar::Advance(std::uint64_t bytes) {
    progress_.doneBytes += bytes;
    if (!isShown_) {
        return;
    }
    const Clock::time_point now = Clock::now();
    if (now < nextDrawing_) {
        return;
    }
    nextDrawing_ = now + kDrawingInterval;
    progress_.elapsed = now - start_;
    isDrawn_ = true;
    // Not cached, since windows are resized.
    const std::size_t columns = TerminalColumns(STDERR_FILENO);
    std::fputs((kClearedLine + ProgressLine(progress_, columns)).c_str(), stderr);
}

}  // namespace sealkeeper
