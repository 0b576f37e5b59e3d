#include "inspect/credentials/examined_file.h"

#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <system_error>

namespace sealkeeper {
namespace {

constexpr unsigned kModeBits = 07777;

std::string SystemText(int systemError) {
    return std::generic_category().message(systemError);
}

std::string ReasonUnread(const std::string& path, FileType type, int lookError) {
    switch (type) {
        case FileType::Missing:
        case FileType::Unknown:
            return SystemText(lookError);
        case FileType::Directory:
            return SystemText(EISDIR);
        case FileType::Fifo:
            return "It is a FIFO";
        case FileType::Socket:
            return "It is a socket";
        case FileType::Regular:
        case FileType::Other:
            return access(path.c_str(), R_OK) == 0 ? std::string() : SystemText(errno);
    }
    return {};
}

std::optional<unsigned> ModeOf(const std::string& path) {
    struct stat status {};
    if (stat(path.c_str(), &status) != 0) {
        return std::nullopt;
    }
    return static_cast<unsigned>(status.st_mode) & kModeBits;
}

}  // namespace

ExaminedFile ExamineFile(const std::string& path) {
    ExaminedFile file;
    file.path = path;
    file.type = GetFileType(path);
    file.reasonUnread = ReasonUnread(path, file.type, errno);
    file.mode = ModeOf(path);
    return file;
}

void MarkUnread(ExaminedFile& file) {
    if (file.reasonUnread.empty()) {
        file.reasonUnread = "The system failed to read it";
    }
}

std::string OctalText(unsigned mode) {
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "%03o", mode);
    return text.data();
}

std::string ModeText(unsigned mode) {
    constexpr std::array<char, 3> kLetters = {'r', 'w', 'x'};
    constexpr std::size_t kPermissions = 9;
    std::string letters;
    for (std::size_t bit = 0; bit < kPermissions; ++bit) {
        const bool isSet = ((mode >> (kPermissions - 1 - bit)) & 1U) != 0;
        letters += isSet ? kLetters[bit % kLetters.size()] : '-';
    }
    return OctalText(mode) + " (" + letters + ")";
}

}  // namespace sealkeeper
