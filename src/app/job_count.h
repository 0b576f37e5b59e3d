// How many threads hash, as a command line says it.
#ifndef SEALKEEPER_APP_JOB_COUNT_H
#define SEALKEEPER_APP_JOB_COUNT_H

#include <cstddef>
#include <optional>
#include <string>

namespace sealkeeper {

inline constexpr std::size_t kMostJobs = 256;

// Nothing when `text` is no number from 0 to `kMostJobs`. 0 stands for one job for each processor.
[[nodiscard]] std::optional<std::size_t> JobsFrom(const std::string& text);

}  // namespace sealkeeper

#endif
