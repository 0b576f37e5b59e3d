// The number of threads that hash, as given on a command line.
#ifndef SEALKEEPER_APP_JOB_COUNT_H
#define SEALKEEPER_APP_JOB_COUNT_H

#include <cstddef>
#include <optional>
#include <string>

namespace sealkeeper {

inline constexpr std::size_t kMostJobs = 256;

// The number of jobs. 0 stands for one for each processor, `kMostJobs` at most. Nothing when `text`
// is not a number from 0 to `kMostJobs`.
[[nodiscard]] std::optional<std::size_t> JobsFrom(const std::string& text);

}  // namespace sealkeeper

#endif
