#include "platform/file_tree.h"

#include <sys/stat.h>

#include <cerrno>

namespace sealkeeper {

ResultCode FileTree::ReadDirectory(const std::string& directory,
                                   std::optional<DirectoryEntries>& entries) const {
    return sealkeeper::ReadDirectory(directory, entries);
}

ResultCode FileTree::LookAtPath(const std::string& path, FileStatus& status) const {
    return sealkeeper::LookAtPath(path, status);
}

ResultCode FileTree::LookForName(const std::string& path, bool& isThere) const {
    struct stat status {};
    isThere = lstat(path.c_str(), &status) == 0;
    return isThere ? ResultCode::Ok : JudgeLookError(path, errno);
}

const FileTree& SystemFileTree() {
    static const FileTree tree;
    return tree;
}

}  // namespace sealkeeper
