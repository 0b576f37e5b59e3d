#include "platform/input_file.h"

#include <fcntl.h>
#include <sys/types.h>
#include <unistd.h>

#include <cerrno>

namespace sealkeeper {

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
    // A hint: that it cannot be given changes nothing.
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
