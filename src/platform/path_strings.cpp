#include "platform/path_strings.h"

#include <algorithm>
#include <cstddef>

namespace sealkeeper {
namespace {

template <typename String>
void AppendSeparatorIfMissing(String& path) {
    if (path.empty() || path.back() == '/' || path.back() == '\\') {
        return;
    }
    path.push_back('/');
}

}  // namespace

void EnsureTrailingSeparator(std::string& path) {
    AppendSeparatorIfMissing(path);
}

void EnsureTrailingSeparatorWide(std::wstring& path) {
    AppendSeparatorIfMissing(path);
}

void EnsureTrailingSlash(std::string& path) {
    if (!path.ends_with('/')) {
        path += '/';
    }
}

bool ReplaceFirst(std::string& text, std::string_view find, std::string_view replacement) {
    const std::size_t position = text.find(find);
    if (position == std::string::npos) {
        return false;
    }
    text.replace(position, find.size(), replacement);
    return true;
}

std::string WithForwardSlashes(std::string path) {
    std::replace(path.begin(), path.end(), '\\', '/');
    return path;
}

std::string BaseName(const std::string& path) {
    const std::size_t separator = path.find_last_of("/\\");
    if (separator == std::string::npos || separator + 1 == path.size()) {
        return path;
    }
    return path.substr(separator + 1);
}

}  // namespace sealkeeper
