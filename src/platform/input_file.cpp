#include "platform/input_file.h"

#include <fcntl.h>
#include <sys/types.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace sealkeeper {
namespace {

// Some systems honour no more of one advice than fits in one request to the disk.
constexpr std::size_t kReadAheadStepBytes = 262'144;

}  // namespace

static_assert(sizeof(off_t) == sizeof(std::int64_t), "positions in files have 64 bits");

std::size_t InputFile::ReadAt(std::uint64_t offset, std::span<std::uint8_t> bytes) const {
    std::size_t delivered = 0;
    while (delivered < bytes.size()) {
        const ssize_t count =
            pread(descriptor_.Get(), bytes.data() + delivered, bytes.size() - delivered,
                  static_cast<off_t>(offset + delivered));
        if (count > 0) {
            delivered += static_cast<std::size_t>(count);
        } else if (count == 0 || errno != EINTR) {
            break;
        }
    }
    return delivered;
}

void InputFile::ReadAhead(std::uint64_t offset, std::size_t lengthBytes) const {
    for (std::size_t advised = 0; advised < lengthBytes; advised += kReadAheadStepBytes) {
        Advise(offset + advised, std::min(kReadAheadStepBytes, lengthBytes - advised));
    }
}

std::size_t InputFile::ReadAheadSteps(std::size_t lengthBytes) {
    return lengthBytes / kReadAheadStepBytes + (lengthBytes % kReadAheadStepBytes != 0 ? 1 : 0);
}

// Best effort: a failed hint changes nothing.
void InputFile::Advise([[maybe_unused]] std::uint64_t offset,
                       [[maybe_unused]] std::size_t lengthBytes) const {
#if defined(F_RDADVISE)
    struct radvisory advice {};
    advice.ra_offset = static_cast<off_t>(offset);
    advice.ra_count = static_cast<int>(lengthBytes);
    static_cast<void>(fcntl(descriptor_.Get(), F_RDADVISE, &advice));
#elif defined(POSIX_FADV_WILLNEED)
    static_cast<void>(posix_fadvise(descriptor_.Get(), static_cast<off_t>(offset),
                                    static_cast<off_t>(lengthBytes), POSIX_FADV_WILLNEED));
#endif
}

}  // namespace sealkeeper
