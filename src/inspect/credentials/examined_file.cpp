#include "inspect/credentials/examined_file.h"

#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cstdio>

#include "inspect/report/unread_reason.h"

namespace sealkeeper {
namespace {

constexpr unsigned kModeBits = 07777;

bool MayBeRead(const std::string& path, FileType type) {
    return (type == FileType::Regular || type == FileType::Other) &&
           access(path.c_str(), R_OK) == 0;
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
    file.reasonUnread = MayBeRead(path, file.type) ? "" : UnreadReason(path);
    file.mode = ModeOf(path);
    return file;
}

void MarkUnread(ExaminedFile& file) {
    if (file.reasonUnread.empty()) {
        file.reasonUnread = UnreadReason(file.path);
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
