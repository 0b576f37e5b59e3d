#include "platform/output_file.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <optional>

#include "platform/file_descriptor.h"
#include "platform/file_system.h"
#include "platform/temporary_file.h"

namespace sealkeeper {
namespace {

constexpr mode_t kModeOfNewFiles = S_IRUSR | S_IWUSR | S_IRGRP | S_IWGRP | S_IROTH | S_IWOTH;
constexpr mode_t kPermissions = S_IRWXU | S_IRWXG | S_IRWXO;
constexpr mode_t kWholeMode = kPermissions | S_ISUID | S_ISGID | S_ISVTX;

WriteOutcome WriteAndClose(FileDescriptor& file, std::span<const std::uint8_t> bytes) {
    const bool taken = file.Write(bytes);
    const bool closed = file.Close();
    if (!taken) {
        return WriteOutcome::WriteFailed;
    }
    return closed ? WriteOutcome::Written : WriteOutcome::CloseFailed;
}

WriteOutcome WriteInPlace(const std::string& path, std::span<const std::uint8_t> bytes) {
    FileDescriptor file;
    if (!file.OpenTruncated(path, kModeOfNewFiles)) {
        return WriteOutcome::OpenFailed;
    }
    return WriteAndClose(file, bytes);
}

bool IsSameFile(const struct stat& one, const struct stat& other) {
    return one.st_dev == other.st_dev && one.st_ino == other.st_ino;
}

// A shell may have sent the console into `file`. What is shown later would be lost with it.
bool IsConsole(const struct stat& file) {
    struct stat console {};
    return (fstat(STDOUT_FILENO, &console) == 0 && IsSameFile(console, file)) ||
           (fstat(STDERR_FILENO, &console) == 0 && IsSameFile(console, file));
}

// The path, free of links, that names `file`, which was opened as `path`. Nothing when there is
// none: some systems have links to open files that lost their name.
std::optional<std::string> PathOfOpenFile(const std::string& path, const struct stat& file) {
    auto target = FollowLinks(path);
    struct stat named {};
    if (!target || lstat(target->c_str(), &named) != 0 || !IsSameFile(named, file)) {
        return std::nullopt;
    }
    return target;
}

// Gives the new file, open as `descriptor`, the owner and the group of `old`. False when it may not
// have both. Only the superuser gives files away, but everybody to groups of their own.
bool TakeOverOwners(const struct stat& old, const struct stat& fresh, int descriptor) {
    if ((fresh.st_uid == old.st_uid && fresh.st_gid == old.st_gid) ||
        fchown(descriptor, old.st_uid, old.st_gid) == 0) {
        return true;
    }
    constexpr auto kUnchanged = static_cast<uid_t>(-1);
    [[maybe_unused]] const int groupGiven = fchown(descriptor, kUnchanged, old.st_gid);
    return false;
}

// Gives the new file, open as `descriptor`, the mode of `old` too. False, with errno saying why,
// when it cannot have it.
bool TakeOver(const struct stat& old, int descriptor) {
    struct stat fresh {};
    if (fstat(descriptor, &fresh) != 0) {
        return false;
    }
    // What runs as its owner must not begin to run as another one.
    const mode_t kept = TakeOverOwners(old, fresh, descriptor) ? kWholeMode : kPermissions;
    const mode_t mode = old.st_mode & kept;
    return (fresh.st_mode & kWholeMode) == mode || fchmod(descriptor, mode) == 0;
}

// What is left of a failure to create a file, to give it a mode or to put it in the place of
// another one: nothing where that was refused. The directory is another user's, or read-only, or
// sticky and the file another user's; the file is a mount point; the file system knows no such
// thing. The file itself may be open to writing all the same.
std::optional<WriteOutcome> UnlessRefused(WriteOutcome failure) {
    switch (errno) {
        case EACCES:
        case EPERM:
        case EROFS:
        case EBUSY:
        case EXDEV:
        case ENOTSUP:
        case ENOSYS:
            return std::nullopt;
        default:
            return failure;
    }
}

// The name in the directory decides which file there is after a loss of power, the old one or the
// new one. Both are whole, so a directory that may not be read, or cannot be flushed, is no
// failure.
void SynchroniseDirectory(const std::string& directory) {
    FileDescriptor descriptor;
    if (descriptor.OpenForReading(directory.empty() ? "." : directory)) {
        static_cast<void>(descriptor.Synchronise());
    }
}

// Puts a new file in the place of `old`, which `target` names, or where nothing is when `old` is
// null. Nothing is returned, and nothing has changed, where that is refused.
std::optional<WriteOutcome> Replace(const std::string& target, const struct stat* old,
                                    std::span<const std::uint8_t> bytes) {
    const std::string directory = target.substr(0, target.rfind('/') + 1);
    if (directory == target) {
        return WriteOutcome::OpenFailed;
    }
    TemporaryFile temporary;
    // Open to its owner alone until its group is known: the mode of the old file is meant for that.
    if (!temporary.CreateIn(directory, old != nullptr ? old->st_mode & S_IRWXU : kModeOfNewFiles)) {
        return UnlessRefused(WriteOutcome::OpenFailed);
    }
    FileDescriptor& descriptor = temporary.Descriptor();
    if (!descriptor.Write(bytes)) {
        return WriteOutcome::WriteFailed;
    }
    // Writing takes away the bits by which a program runs as its owner or group.
    if (old != nullptr && !TakeOver(*old, descriptor.Get())) {
        return UnlessRefused(WriteOutcome::WriteFailed);
    }
    if (!descriptor.Synchronise()) {
        return WriteOutcome::WriteFailed;
    }
    if (!descriptor.Close()) {
        return WriteOutcome::CloseFailed;
    }
    if (!temporary.RenameTo(target)) {
        return UnlessRefused(WriteOutcome::WriteFailed);
    }
    SynchroniseDirectory(directory);
    return WriteOutcome::Written;
}

WriteOutcome WriteNewFile(const std::string& path, std::span<const std::uint8_t> bytes) {
    const auto target = FollowLinks(path);
    if (!target) {
        return WriteOutcome::OpenFailed;
    }
    const auto outcome = Replace(*target, nullptr, bytes);
    return outcome ? *outcome : WriteInPlace(path, bytes);
}

WriteOutcome WriteRegularFile(const std::string& path, const struct stat& old,
                              std::span<const std::uint8_t> bytes) {
    const auto target = IsConsole(old) ? std::nullopt : PathOfOpenFile(path, old);
    const auto outcome = target ? Replace(*target, &old, bytes) : std::nullopt;
    return outcome ? *outcome : WriteInPlace(path, bytes);
}

}  // namespace

WriteOutcome WriteWholeFile(const std::string& path, std::span<const std::uint8_t> bytes) {
    // Whether the file may be written shows when it is opened. A FIFO stays open: its reader takes
    // the closing for the end.
    FileDescriptor existing;
    if (!existing.OpenForWriting(path)) {
        return errno == ENOENT ? WriteNewFile(path, bytes) : WriteOutcome::OpenFailed;
    }
    struct stat status {};
    if (fstat(existing.Get(), &status) != 0) {
        return WriteOutcome::OpenFailed;
    }
    if (!S_ISREG(status.st_mode)) {
        return WriteAndClose(existing, bytes);
    }
    // Nothing was written to it, so the closing has nothing to tell.
    static_cast<void>(existing.Close());
    return WriteRegularFile(path, status, bytes);
}

}  // namespace sealkeeper
