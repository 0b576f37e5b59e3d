#include "inspect/tree/parent_component.h"

#include <algorithm>
#include <cstddef>

namespace sealkeeper {

bool HasParentComponent(std::string_view path) {
    for (std::size_t begin = 0; begin <= path.size();) {
        const std::size_t end = std::min(path.find('/', begin), path.size());
        if (path.substr(begin, end - begin) == "..") {
            return true;
        }
        begin = end + 1;
    }
    return false;
}

}  // namespace sealkeeper
