#include "app/job_count.h"

#include <algorithm>
#include <charconv>
#include <system_error>

#include "platform/processors.h"

namespace sealkeeper {

std::optional<std::size_t> JobsFrom(const std::string& text) {
    std::size_t jobs = 0;
    const char* const end = text.data() + text.size();
    const auto [parsedEnd, error] = std::from_chars(text.data(), end, jobs);
    if (error != std::errc() || parsedEnd != end || jobs > kMostJobs) {
        return std::nullopt;
    }
    return jobs == 0 ? std::min(CountProcessors(), kMostJobs) : jobs;
}

}  // namespace sealkeeper
