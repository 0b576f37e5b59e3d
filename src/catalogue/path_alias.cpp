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

// Scans `path` from left to right. Inserted values are never searched, not even in part. `key` must
// not be empty.
std::wstring ReplaceEveryOccurrence(const std::wstring& path, const std::wstring& key,
                                    const std::wstring& value) {
    std::wstring replaced;
    replaced.reserve(path.size());
    std::size_t copied = 0;
    for (std::size_t found = path.find(key); found != std::wstring::npos;
         found = path.find(key, copied)) {
        replaced.append(path, copied, found - copied);
        replaced += value;
        copied = found + key.size();
    }
    return replaced.append(path, copied);
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

AliasMap WideAliases(const std::map<std::string, std::string>& aliases) {
    AliasMap wide;
    for (const auto& [name, value] : aliases) {
        wide.emplace(Utf8ToWide(name), Utf8ToWide(value));
    }
    return wide;
}

const AliasMap::value_type* FirstAliasIn(const AliasMap& aliases, std::wstring_view path) {
    const auto found = std::find_if(aliases.begin(), aliases.end(), [path](const auto& alias) {
        return !alias.first.empty() && path.find(alias.first) != std::wstring_view::npos;
    });
    return found == aliases.end() ? nullptr : &*found;
}

ResultCode ApplyPathAlias(const AliasMap& aliases, CatalogueEntry& entry) {
    if (aliases.empty()) {
        return ResultCode::Ok;
    }
    const std::wstring collectedPath = WidePath(entry.path);
    const AliasMap::value_type* alias = FirstAliasIn(aliases, collectedPath);
    if (alias == nullptr) {
        return ResultCode::Ok;
    }
    const std::wstring path = ReplaceEveryOccurrence(collectedPath, alias->first, alias->second);
    if (path.size() > entry_record::kMaxAliasedPathCharacters) {
        return RejectLongPath(path);
    }
    StoreFourBytesPerCharacter(path, entry.path);
    entry.namePosition = NamePositionOf(entry.path);
    return ResultCode::Ok;
}

}  // namespace sealkeeper
