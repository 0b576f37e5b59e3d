#include "inspect/check/unlisted_files.h"

#include <string>

#include "inspect/check/link_target.h"
#include "inspect/report/logged_error.h"
#include "inspect/report/unread_reason.h"
#include "inspect/tree/directory_walk.h"
#include "platform/file_tree.h"

namespace sealkeeper {
namespace {

AdditionKind KindOf(EntryType type) {
    switch (type) {
        case EntryType::Regular:
            return AdditionKind::UnlistedFile;
        case EntryType::Link:
            return AdditionKind::UnlistedLink;
        case EntryType::Directory:
        case EntryType::Other:
            break;
    }
    return AdditionKind::UnlistedSpecialFile;
}

Addition UnlistedItem(const WalkedItem& item) {
    Addition addition{KindOf(item.type), item.path, {}, 0, {}};
    if (item.type == EntryType::Link) {
        ReadTarget(addition);
    }
    return addition;
}

Addition NotLookedAt(const WalkedDirectory& directory, ResultCode code) {
    const std::string name = directory.path.empty() ? "." : directory.path;
    return {AdditionKind::NotLookedAt,
            name,
            {},
            0,
            code == ResultCode::Ok ? UnreadDirectoryReason(name) : LastLoggedError()};
}

}  // namespace

std::vector<Addition> FindUnlistedFiles(const ListedPaths& listed) {
    std::vector<Addition> additions;
    DirectoryWalk walk(SystemFileTree());
    WalkedDirectory directory;
    while (walk.HasNext()) {
        const ResultCode code = walk.Next(directory);
        if (!directory.items) {
            additions.push_back(NotLookedAt(directory, code));
            continue;
        }
        for (const WalkedItem& item : *directory.items) {
            if (!listed.Has(item.path)) {
                additions.push_back(UnlistedItem(item));
            }
        }
    }
    return additions;
}

}  // namespace sealkeeper
