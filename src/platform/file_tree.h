// Where the rules of a configuration file look for files.
#ifndef SEALKEEPER_PLATFORM_FILE_TREE_H
#define SEALKEEPER_PLATFORM_FILE_TREE_H

#include <optional>
#include <string>

#include "app/result_code.h"
#include "platform/directory_listing.h"
#include "platform/file_system.h"

namespace sealkeeper {

// The files of the system. Derive from it to ask what the rules would find elsewhere, for example
// when files exist that are yet to be written.
class FileTree {
  public:
    FileTree() = default;
    FileTree(const FileTree&) = delete;
    FileTree& operator=(const FileTree&) = delete;
    virtual ~FileTree() = default;

    // As the function of the same name in directory_listing.h.
    virtual ResultCode ReadDirectory(const std::string& directory,
                                     std::optional<DirectoryEntries>& entries) const;

    // As `LookAtPath` in file_system.h.
    virtual ResultCode LookAtPath(const std::string& path, FileStatus& status) const;

    // Sets `isThere` to whether something has the name `path`, even a dangling link. Fails as
    // `LookAtPath` does.
    virtual ResultCode LookForName(const std::string& path, bool& isThere) const;
};

// The tree that generate uses.
[[nodiscard]] const FileTree& SystemFileTree();

}  // namespace sealkeeper

#endif
