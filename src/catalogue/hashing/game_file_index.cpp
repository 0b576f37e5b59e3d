#include "catalogue/hashing/game_file_index.h"

#include <algorithm>
#include <cctype>
#include <climits>
#include <optional>

#include "platform/directory_listing.h"
#include "platform/path_strings.h"
#include "platform/text_encoding.h"

namespace sealkeeper {
namespace {

// `std::tolower` is defined only for the values of an unsigned char (and EOF).
wchar_t LowerCase(wchar_t character) {
    const auto codePoint = static_cast<char32_t>(character);
    return codePoint <= UCHAR_MAX ? static_cast<wchar_t>(std::tolower(static_cast<int>(codePoint)))
                                  : character;
}

std::wstring KeyOf(const GameFileIndex& index, const std::wstring& path) {
    std::wstring key = path.starts_with(index.root) ? path.substr(index.root.size()) : path;
    std::transform(key.begin(), key.end(), key.begin(), LowerCase);
    return key;
}

bool WalkDirectory(GameFileIndex& index, std::wstring directory);

// Adds one entry, or walks it if it is a directory. False ends the walk.
bool AddEntry(GameFileIndex& index, const std::wstring& directory, const DirectoryEntry& entry) {
    if (entry.name == "." || entry.name == "..") {
        return true;
    }
    const std::wstring path = directory + Utf8ToWide(entry.name);
    if (entry.type == EntryType::Directory) {
        // A directory that cannot be opened is skipped; other failures are in the error text.
        static_cast<void>(WalkDirectory(index, path));
        return index.errorText.empty();
    }
    if (!index.paths.emplace(KeyOf(index, path), path).second) {
        index.errorText = L"Two versions of the same file exist: " + path + L".";
        return false;
    }
    return true;
}

bool WalkDirectory(GameFileIndex& index, std::wstring directory) {
    EnsureTrailingSeparatorWide(directory);
    std::optional<DirectoryEntries> entries;
    if (ReadDirectory(WideToUtf8(directory), entries) != ResultCode::Ok) {
        index.errorText = L"The directory could not be read: " + directory + L".";
    }
    if (!entries) {
        return false;
    }
    return std::all_of(entries->begin(), entries->end(), [&](const DirectoryEntry& entry) {
        return AddEntry(index, directory, entry);
    });
}

}  // namespace

GameFileIndex& ProcessGameFileIndex() {
    static GameFileIndex index;
    return index;
}

bool BuildGameFileIndex(GameFileIndex& index, const std::wstring& root) {
    if (root.empty() || !index.errorText.empty()) {
        return false;
    }
    index.root = root;
    EnsureTrailingSeparatorWide(index.root);
    return WalkDirectory(index, index.root);
}

bool FindGameFile(const GameFileIndex& index, const std::wstring& path, std::wstring& realPath) {
    realPath.clear();
    if (path.empty()) {
        return false;
    }
    const auto found = index.paths.find(KeyOf(index, path));
    if (found == index.paths.end()) {
        return false;
    }
    realPath = found->second;
    return true;
}

}  // namespace sealkeeper
