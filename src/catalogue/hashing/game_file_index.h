// Finds a file of the game whose name differs from the path in the catalogue only in letter case.
//
// Files that cannot be opened are looked up in the index of the process. Deliberately, nothing
// fills that index: on a case-sensitive file system, a path with the wrong letter case stays
// missing.
#ifndef SEALKEEPER_CATALOGUE_HASHING_GAME_FILE_INDEX_H
#define SEALKEEPER_CATALOGUE_HASHING_GAME_FILE_INDEX_H

#include <string>
#include <unordered_map>

namespace sealkeeper {

struct GameFileIndex {
    // Ends in a separator once the index is built.
    std::wstring root;
    // Maps the lower-cased path of a file, relative to the root, to its path on disk.
    std::unordered_map<std::wstring, std::wstring> paths;
    // Empty while the index is valid.
    std::wstring errorText;
};

// The one index of the process; empty unless it is built.
[[nodiscard]] GameFileIndex& ProcessGameFileIndex();

// Adds every file below `root` to `index`, which must be empty. Directories below the root that
// this user may not read are skipped. Returns false with `index` unchanged when `root` is empty or
// the index already has an error; with only the root set when this user may not read `root`; and
// with the error text set and the walk ended when two paths differ only in the case of ASCII
// letters or the system fails to read a directory.
[[nodiscard]] bool BuildGameFileIndex(GameFileIndex& index, const std::wstring& root);

// Sets `realPath` to the path on disk of the file that `path`, absolute or relative to the root,
// names in any case of ASCII letters. False, with `realPath` empty, when there is none.
[[nodiscard]] bool FindGameFile(const GameFileIndex& index, const std::wstring& path,
                                std::wstring& realPath);

}  // namespace sealkeeper

#endif
