#include "inspect/tree/lexical_path.h"

#include <algorithm>
#include <cstddef>

namespace sealkeeper {
namespace {

constexpr std::string_view kParent = "..";

void AddComponent(std::string& path, std::string_view component) {
    if (component.empty() || component == ".") {
        return;
    }
    if (component == kParent && !path.empty() && NameOf(path) != kParent) {
        path.resize(ParentOf(path).size());
        return;
    }
    if (!path.empty()) {
        path += '/';
    }
    path += component;
}

}  // namespace

std::string LexicalPath(std::string_view path) {
    std::string lexical;
    for (std::size_t begin = 0; begin <= path.size();) {
        const std::size_t end = std::min(path.find('/', begin), path.size());
        AddComponent(lexical, path.substr(begin, end - begin));
        begin = end + 1;
    }
    return lexical;
}

bool LeavesGame(std::string_view lexicalPath) {
    return lexicalPath == kParent || lexicalPath.starts_with("../");
}

std::string_view ParentOf(std::string_view lexicalPath) {
    const std::size_t slash = lexicalPath.rfind('/');
    return slash == std::string_view::npos ? std::string_view() : lexicalPath.substr(0, slash);
}

std::string_view NameOf(std::string_view lexicalPath) {
    const std::size_t slash = lexicalPath.rfind('/');
    return slash == std::string_view::npos ? lexicalPath : lexicalPath.substr(slash + 1);
}

}  // namespace sealkeeper
