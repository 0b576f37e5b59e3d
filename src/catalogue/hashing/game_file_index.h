// Finds a file of the game whose letter case differs from the catalogue's path.
//
// The readers ask the process's index for files that they cannot open. Nothing fills that index,
// deliberately: a path whose letter case is wrong stays missing on a case-sensitive file system.
#ifndef SEALKEEPER_CATALOGUE_HASHING_GAME_FILE_INDEX_H
#define SEALKEEPER_CATALOGUE_HASHING_GAME_FILE_INDEX_H

#include <string>
#include <unordered_map>

namespace sealkeeper {

struct GameFileIndex {
    // Ends in a separator once the index is built.
    std::wstring root;
    // From a file's path relative to the root, lower-cased, to its path as found on disk.
    std::unordered_map<std::wstring, std::wstring> paths;
    // Empty while the index is sound.
    std::wstring errorText;
};

// The one index of the process, empty unless somebody builds it.
[[nodiscard]] GameFileIndex& ProcessGameFileIndex();

// Enters every file below `root` in `index`, which is to be empty. Returns false, with `index` as
// it was, when `root` is empty or the index holds an error already; false, with only the root set,
// when `root` must not be read; and false, with the error text set and the walk ended, when two
// paths differ only in the case of ASCII letters, or the system fails to read a directory.
// Directories below the root that must not be read are left out.
[[nodiscard]] bool BuildGameFileIndex(GameFileIndex& index, const std::wstring& root);

// Sets `realPath` to the path on disk of the file that `path`, absolute or relative to the root,
// names in whatever case of ASCII letters. Returns false, with `realPath` empty, when there is
// none.
[[nodiscard]] bool FindGameFile(const GameFileIndex& index, const std::wstring& path,
                                std::wstring& realPath);

}  // namespace sealkeeper

#endif
