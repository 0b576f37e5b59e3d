#include "inspect/check/sealed_links.h"

#include <cstddef>

#include "inspect/check/link_target.h"
#include "inspect/report/logged_error.h"
#include "platform/directory_listing.h"

namespace sealkeeper {

void SealedLinks::LookOnTheWayTo(const std::string& path) {
    for (std::size_t slash = path.find('/'); slash != std::string::npos;
         slash = path.find('/', slash + 1)) {
        const std::string directory = path.substr(0, slash);
        if (!directory.empty() && LookAtDirectory(directory) == Found::Link) {
            ++found_.at(directory).sealedFiles;
        }
    }
    if (LookAt(path) == Found::Link) {
        ++found_.at(path).sealedFiles;
    }
}

SealedLinks::Found SealedLinks::LookAtDirectory(const std::string& path) {
    const auto known = directories_.find(path);
    if (known != directories_.end()) {
        return known->second;
    }
    return directories_[path] = LookAt(path);
}

SealedLinks::Found SealedLinks::LookAt(const std::string& path) {
    EntryType type = EntryType::Other;
    if (LinkStatusType(path, type) != ResultCode::Ok) {
        found_[path] = {AdditionKind::NotLookedAt, path, {}, 0, LastLoggedError()};
        return Found::Failure;
    }
    if (type != EntryType::Link) {
        return Found::NoLink;
    }
    // Several listed paths may lead through the same link.
    Addition& link = found_[path];
    if (link.path.empty()) {
        link = {AdditionKind::LinkWhereSealed, path, {}, 0, {}};
        ReadTarget(link);
    }
    return Found::Link;
}

std::vector<Addition> SealedLinks::Additions() const {
    std::vector<Addition> additions;
    for (const auto& [path, addition] : found_) {
        additions.push_back(addition);
    }
    return additions;
}

}  // namespace sealkeeper
