#include "inspect/rules/judged_files.h"

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "inspect/tree/lexical_path.h"

namespace sealkeeper {
namespace {

using SkipRules = std::unordered_map<std::string, SkipRule>;

LeftOutReason ReasonOfKind(ItemKind kind) {
    switch (kind) {
        case ItemKind::Link:
            return LeftOutReason::Link;
        case ItemKind::DanglingLink:
            return LeftOutReason::DanglingLink;
        case ItemKind::SpecialFile:
            return LeftOutReason::NotRegularFile;
        case ItemKind::UnlistableDirectory:
            return LeftOutReason::Unlistable;
        // Not judged.
        case ItemKind::DirectoryWithoutFiles:
        case ItemKind::RegularFile:
            break;
    }
    return LeftOutReason::Unreachable;
}

LeftOutReason ReasonOf(SkipRule rule, ItemKind kind) {
    switch (rule) {
        case SkipRule::HiddenName:
            return LeftOutReason::Hidden;
        case SkipRule::ExcludedPath:
            return LeftOutReason::ExcludedPath;
        case SkipRule::SizeThreshold:
            // No other threshold would get anything else sealed. A link is skipped by the size of
            // its target, and anything by that of the directory's own entry.
            return kind == ItemKind::RegularFile ? LeftOutReason::TooLarge : ReasonOfKind(kind);
        case SkipRule::ExcludedExtension:
            return LeftOutReason::ExcludedExtension;
        case SkipRule::NoExtension:
            return LeftOutReason::NoExtension;
        case SkipRule::OtherType:
            return ReasonOfKind(kind);
        case SkipRule::Unlistable:
            break;
    }
    return LeftOutReason::Unlistable;
}

// Finds the rule that left a path out. Looks each directory up only once.
class RuleFinder {
  public:
    explicit RuleFinder(SkipRules rules) : rules_(std::move(rules)) {}

    // The rule for `path` or its nearest parent that has one; empty if there is none.
    std::optional<SkipRule> RuleFor(const std::string& path) {
        std::vector<std::string> asked;
        std::string next = path;
        while (!known_.contains(next)) {
            const auto found = rules_.find(next);
            if (found != rules_.end() || next.empty()) {
                known_[next] = found != rules_.end() ? std::optional(found->second) : std::nullopt;
                break;
            }
            asked.push_back(next);
            next = ParentOf(next);
        }
        const std::optional<SkipRule> rule = known_[next];
        for (std::string& below : asked) {
            known_.emplace(std::move(below), rule);
        }
        return rule;
    }

  private:
    SkipRules rules_;
    std::unordered_map<std::string, std::optional<SkipRule>> known_;
};

LeftOutReason ReasonFor(const InventoryItem& item, RuleFinder& rules,
                        const CatalogueConfig& config) {
    const auto rule = rules.RuleFor(item.path);
    if (rule == SkipRule::SizeThreshold && item.kind == ItemKind::RegularFile) {
        // No other threshold would get the file sealed if its extension leaves it out.
        const auto extensionRule = RuleOfExtension(config, std::string(NameOf(item.path)));
        return ReasonOf(extensionRule.value_or(*rule), item.kind);
    }
    if (rule) {
        return ReasonOf(*rule, item.kind);
    }
    // In a walk over the whole game, one that could be listed before, but cannot now. With include
    // patterns the game directory alone, since what it holds is not known.
    const bool isHole = !HasIncludes(config) || item.path.empty();
    return isHole && item.kind == ItemKind::UnlistableDirectory ? LeftOutReason::Unlistable
                                                                : LeftOutReason::NotIncluded;
}

// A link that dangles now may lead to what generate writes before it reads the game.
bool LeadsToSealedFiles(const InventoryItem& item, const LexicalPaths& sealed) {
    const std::string below = item.path + "/";
    const auto next = sealed.lower_bound(below);
    const bool isLink = item.kind == ItemKind::Link || item.kind == ItemKind::DanglingLink;
    return isLink && next != sealed.end() && next->starts_with(below);
}

// A pattern may lead to directories that the inventory lacks: below one that can be searched but
// not listed, through a link, or outside the game.
void AddUnlistableDirectories(const Selection& selection, std::vector<InventoryItem>& inventory) {
    std::unordered_set<std::string> known;
    for (const InventoryItem& item : inventory) {
        known.insert(item.path);
    }
    for (const SkippedPath& skipped : selection.skipped) {
        if (skipped.rule != SkipRule::Unlistable) {
            continue;
        }
        std::string path = LexicalPath(skipped.path);
        if (known.insert(path).second) {
            inventory.push_back({std::move(path), ItemKind::UnlistableDirectory});
        }
    }
}

// Relative to the game directory, as on disk.
std::string ShownPath(const std::string& walkedPath) {
    constexpr std::string_view kHere = "./";
    return walkedPath.starts_with(kHere) ? walkedPath.substr(kHere.size()) : walkedPath;
}

}  // namespace

std::vector<JudgedFile> JudgeFiles(const Selection& selection,
                                   std::vector<InventoryItem> inventory) {
    AddUnlistableDirectories(selection, inventory);
    std::vector<JudgedFile> judged;
    LexicalPaths sealed;
    for (const SelectedFile& file : selection.files) {
        judged.push_back({ShownPath(file.path), file.sizeBytes, std::nullopt});
        sealed.insert(LexicalPath(file.path));
    }
    SkipRules rules;
    for (const SkippedPath& skipped : selection.skipped) {
        rules.emplace(LexicalPath(skipped.path), skipped.rule);
    }
    RuleFinder finder(std::move(rules));
    for (const InventoryItem& item : inventory) {
        if (item.kind != ItemKind::DirectoryWithoutFiles && !sealed.contains(item.path) &&
            !LeadsToSealedFiles(item, sealed)) {
            judged.push_back({item.path.empty() ? kGameItself : item.path, item.sizeBytes,
                              ReasonFor(item, finder, selection.config)});
        }
    }
    std::stable_sort(judged.begin(), judged.end(),
                     [](const JudgedFile& a, const JudgedFile& b) { return a.path < b.path; });
    return judged;
}

}  // namespace sealkeeper
