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

// A shell may have redirected the console to `file`. If it were replaced, later output would be
// lost with the old file.
bool IsConsole(const struct stat& file) {
    struct stat console {};
    return (fstat(STDOUT_FILENO, &console) == 0 && IsSameFile(console, file)) ||
           (fstat(STDERR_FILENO, &console) == 0 && IsSameFile(console, file));
}

// The path that names `file`, which was opened as `path`, once its links are followed. Nothing when
// there is none: some systems have links to open files that have no name any more.
std::optional<std::string> PathOfOpenFile(const std::string& path, const struct stat& file) {
    auto target = FollowLinks(path);
    struct stat named {};
    if (!target || lstat(target->c_str(), &named) != 0 || !IsSameFile(named, file)) {
        return std::nullopt;
    }
    return target;
}

// Gives the new file, open as `descriptor`, the owner and the group of `old`. False when it cannot
// have both. Only the superuser may give a file to another user; anyone may give it to a group that
// they belong to.
bool TakeOverOwners(const struct stat& old, const struct stat& fresh, int descriptor) {
    if ((fresh.st_uid == old.st_uid && fresh.st_gid == old.st_gid) ||
        fchown(descriptor, old.st_uid, old.st_gid) == 0) {
        return true;
    }
    constexpr auto kUnchanged = static_cast<uid_t>(-1);
    [[maybe_unused]] const int groupGiven = fchown(descriptor, kUnchanged, old.st_gid);
    return false;
}

// Gives the new file, open as `descriptor`, the owner, group and mode of `old`. False, with errno
// set, when it cannot have the mode.
bool TakeOver(const struct stat& old, int descriptor) {
    struct stat fresh {};
    if (fstat(descriptor, &fresh) != 0) {
        return false;
    }
    // A set-user-ID program must not become set-user-ID to another owner.
    const mode_t kept = TakeOverOwners(old, fresh, descriptor) ? kWholeMode : kPermissions;
    const mode_t mode = old.st_mode & kept;
    return (fresh.st_mode & kWholeMode) == mode || fchmod(descriptor, mode) == 0;
}

// Nothing if errno says that a step of the replacement was refused, else `failure`. It is refused
// if the directory belongs to another user, is read-only, or is sticky and the file belongs to
// another user; if the file is a mount point; or if the file system does not support it. The file
// itself may still be writable in place.
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

// After a power loss, the name in the directory leads to the old file or the new one. Both are
// whole, so this is best effort: a directory that cannot be opened or flushed is not a failure.
void SynchroniseDirectory(const std::string& directory) {
    FileDescriptor descriptor;
    if (descriptor.OpenForReading(directory.empty() ? "." : directory)) {
        static_cast<void>(descriptor.Synchronise());
    }
}

// Replaces `old`, which `target` names, by a new file, or creates it if `old` is null. Returns
// nothing, with nothing changed, when that is refused.
std::optional<WriteOutcome> Replace(const std::string& target, const struct stat* old,
                                    std::span<const std::uint8_t> bytes) {
    const std::string directory = target.substr(0, target.rfind('/') + 1);
    if (directory == target) {
        return WriteOutcome::OpenFailed;
    }
    TemporaryFile temporary;
    // Only its owner has access until its group is set: the old mode was meant for the old group.
    if (!temporary.CreateIn(directory, old != nullptr ? old->st_mode & S_IRWXU : kModeOfNewFiles)) {
        return UnlessRefused(WriteOutcome::OpenFailed);
    }
    FileDescriptor& descriptor = temporary.Descriptor();
    if (!descriptor.Write(bytes)) {
        return WriteOutcome::WriteFailed;
    }
    // After the write, because writing clears the set-user-ID and set-group-ID bits.
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
    // Opening the file tells whether it may be written. A FIFO is kept open, because its reader
    // takes closing it for the end.
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
    // Nothing was written to it, so a failed close tells nothing.
    static_cast<void>(existing.Close());
    return WriteRegularFile(path, status, bytes);
}

}  // namespace sealkeeper
