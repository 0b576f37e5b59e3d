#include "catalogue/alias_matcher.h"

#include <algorithm>

namespace sealkeeper {

AliasMatcher::AliasMatcher(const AliasMap& aliases) {
    for (const AliasMap::value_type& alias : aliases) {
        if (!alias.first.empty()) {
            keys_.push_back(&alias);
            beginnings_ |= BeginningOf(alias.first.front());
        }
    }
    if (keys_.empty()) {
        return;
    }
    nodes_.emplace_back();
    std::queue<KeyRange> keysOfNodes;
    keysOfNodes.push({0, keys_.size(), 0});
    for (std::size_t node = kRoot; node < nodes_.size(); ++node) {
        const KeyRange keys = keysOfNodes.front();
        keysOfNodes.pop();
        CompleteNode(node, keys, keysOfNodes);
    }
}

const AliasMap::value_type* AliasMatcher::FirstKeyIn(std::wstring_view path) const {
    std::size_t firstKey = kNoKey;
    std::size_t node = kRoot;
    for (const wchar_t character : path) {
        if (node == kRoot && !MayBeginKey(character)) {
            continue;
        }
        node = Next(node, character);
        firstKey = std::min(firstKey, nodes_[node].firstKey);
        if (firstKey == 0) {
            break;
        }
    }
    return firstKey == kNoKey ? nullptr : keys_[firstKey];
}

// Sets the first key and adds the children. The nodes of all shorter strings, and failures lead to
// no others, are complete.
void AliasMatcher::CompleteNode(std::size_t node, KeyRange keys,
                                std::queue<KeyRange>& keysOfNodes) {
    const std::size_t failure = nodes_[node].failure;
    nodes_[node].firstKey = nodes_[failure].firstKey;
    if (keys_[keys.begin]->first.size() == keys.length) {
        // The string is the first of these keys and occurs wherever the others do, so they need no
        // nodes.
        nodes_[node].firstKey = std::min(nodes_[node].firstKey, keys.begin);
        return;
    }
    nodes_[node].firstChild = nodes_.size();
    while (keys.begin != keys.end) {
        Node child;
        child.character = keys_[keys.begin]->first[keys.length];
        child.failure = node == kRoot ? kRoot : Next(failure, child.character);
        nodes_.push_back(child);
        ++nodes_[node].childCount;
        const std::size_t end = EndOfCharacter(keys);
        keysOfNodes.push({keys.begin, end, keys.length + 1});
        keys.begin = end;
    }
}

// The end of those keys that have the same character behind the string as the first one.
std::size_t AliasMatcher::EndOfCharacter(const KeyRange& keys) const {
    const auto characterOf = [this, &keys](std::size_t key) {
        return keys_[key]->first[keys.length];
    };
    std::size_t end = keys.begin + 1;
    while (end != keys.end && characterOf(end) == characterOf(keys.begin)) {
        ++end;
    }
    return end;
}

// The root, which is nobody's child, when there is none.
std::size_t AliasMatcher::Child(const Node& node, wchar_t character) const {
    const auto begin = nodes_.begin() + static_cast<std::ptrdiff_t>(node.firstChild);
    const auto end = begin + static_cast<std::ptrdiff_t>(node.childCount);
    const auto found = std::lower_bound(
        begin, end, character,
        [](const Node& child, wchar_t wanted) { return child.character < wanted; });
    return found != end && found->character == character
               ? static_cast<std::size_t>(found - nodes_.begin())
               : kRoot;
}

// The node of the longest string that ends with `character` behind what was read before. Every
// failure on the way gives up a character at least, so there are no more failures than characters.
std::size_t AliasMatcher::Next(std::size_t node, wchar_t character) const {
    std::size_t next = Child(nodes_[node], character);
    while (next == kRoot && node != kRoot) {
        node = nodes_[node].failure;
        next = Child(nodes_[node], character);
    }
    return next;
}

}  // namespace sealkeeper
