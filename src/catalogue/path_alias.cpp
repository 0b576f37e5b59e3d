#include "catalogue/path_alias.h"

#include <algorithm>
#include <cstddef>

#include "platform/text_encoding.h"

namespace sealkeeper {
namespace {

std::wstring WidePath(const PathField& field) {
    const auto end = std::find(field.begin(), field.end(), u'\0');
    return Utf16ToWide(std::u16string(field.begin(), end));
}

// Scans from left to right and goes on behind each inserted value. `key` is not empty.
void ReplaceEveryOccurrence(std::wstring& path, const std::wstring& key,
                            const std::wstring& value) {
    std::size_t position = path.find(key);
    while (position != std::wstring::npos) {
        path.replace(position, key.size(), value);
        position = path.find(key, position + value.size());
    }
}

void StoreFourBytesPerCharacter(const std::wstring& path, PathField& field) {
    field.fill(u'\0');
    auto unit = field.begin();
    for (const wchar_t character : path) {
        const auto codePoint = static_cast<char32_t>(character);
        *unit++ = static_cast<char16_t>(codePoint & 0xFFFFU);
        *unit++ = static_cast<char16_t>(codePoint >> 16U);
    }
}

}  // namespace

ResultCode ApplyPathAlias(const AliasMap& aliases, CatalogueEntry& entry) {
    if (aliases.empty()) {
        return ResultCode::Ok;
    }
    std::wstring path = WidePath(entry.path);
    const auto alias = std::find_if(aliases.begin(), aliases.end(), [&path](const auto& candidate) {
        // An empty name occurs everywhere and stands for nothing.
        return !candidate.first.empty() && path.find(candidate.first) != std::wstring::npos;
    });
    if (alias == aliases.end()) {
        return ResultCode::Ok;
    }
    ReplaceEveryOccurrence(path, alias->first, alias->second);
    if (path.size() > entry_record::kMaxAliasedPathCharacters) {
        return RejectLongPath(path);
    }
    StoreFourBytesPerCharacter(path, entry.path);
    entry.namePosition = NamePositionOf(entry.path);
    return ResultCode::Ok;
}

}  // namespace sealkeeper
