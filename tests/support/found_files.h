// Converts paths to lists of found files, and back.
#ifndef SEALKEEPER_SUPPORT_FOUND_FILES_H
#define SEALKEEPER_SUPPORT_FOUND_FILES_H

#include <string>
#include <vector>

#include "platform/found_file.h"

namespace sealkeeper::test {

// Files without an earlier status.
inline std::vector<FoundFile> Unseen(const std::vector<std::wstring>& paths) {
    std::vector<FoundFile> files;
    for (const std::wstring& path : paths) {
        files.push_back({path, {}});
    }
    return files;
}

inline std::vector<std::wstring> PathsOf(const std::vector<FoundFile>& files) {
    std::vector<std::wstring> paths;
    for (const FoundFile& file : files) {
        paths.push_back(file.path);
    }
    return paths;
}

}  // namespace sealkeeper::test

#endif
