// Tells which path alias applies to a path, in time linear in the path however many aliases there
// are.
#ifndef SEALKEEPER_CATALOGUE_ALIAS_MATCHER_H
#define SEALKEEPER_CATALOGUE_ALIAS_MATCHER_H

#include <cstddef>
#include <cstdint>
#include <limits>
#include <map>
#include <queue>
#include <string>
#include <string_view>
#include <vector>

namespace sealkeeper {

// From the part of a path that is replaced to what takes its place.
using AliasMap = std::map<std::wstring, std::wstring>;

// The automaton of Aho and Corasick ("Efficient string matching: an aid to bibliographic search",
// Communications of the ACM, 1975) over the keys of an alias map. Besides its root it has at most
// as many nodes as the keys have characters. An empty key stands for nothing and is left out.
class AliasMatcher {
  public:
    // `aliases` is to outlive the matcher and not to change meanwhile.
    explicit AliasMatcher(const AliasMap& aliases);
    explicit AliasMatcher(AliasMap&& aliases) = delete;

    // Whether there is no key that a path could hold.
    [[nodiscard]] bool IsEmpty() const { return keys_.empty(); }

    // The first alias, in key order, whose key occurs anywhere in `path`; null when none does.
    [[nodiscard]] const AliasMap::value_type* FirstKeyIn(std::wstring_view path) const;

  private:
    static constexpr std::size_t kRoot = 0;
    static constexpr std::size_t kNoKey = std::numeric_limits<std::size_t>::max();

    // Stands for a string that some key begins with; the root stands for the empty one.
    struct Node {
        // The last one of its string.
        wchar_t character = L'\0';
        // The nodes of strings longer by one follow each other, in the order of their characters.
        std::uint32_t childCount = 0;
        std::size_t firstChild = 0;
        // The node of the longest proper suffix that has one.
        std::size_t failure = kRoot;
        // The smallest index of a key that the string ends in.
        std::size_t firstKey = kNoKey;
    };

    // The keys that begin with the string of a node, which has `length` characters.
    struct KeyRange {
        std::size_t begin;
        std::size_t end;
        std::size_t length;
    };

    static std::uint64_t BeginningOf(wchar_t character) {
        return std::uint64_t{1} << (static_cast<std::uint32_t>(character) % 64U);
    }

    // False for most characters that no key begins with.
    [[nodiscard]] bool MayBeginKey(wchar_t character) const {
        return (beginnings_ & BeginningOf(character)) != 0;
    }

    void CompleteNode(std::size_t node, KeyRange keys, std::queue<KeyRange>& keysOfNodes);
    [[nodiscard]] std::size_t EndOfCharacter(const KeyRange& keys) const;
    [[nodiscard]] std::size_t Child(const Node& node, wchar_t character) const;
    [[nodiscard]] std::size_t Next(std::size_t node, wchar_t character) const;

    // In map order, and so smaller keys have smaller indices.
    std::vector<const AliasMap::value_type*> keys_;
    // The characters that keys begin with, all those that are alike in their last six bits as one.
    std::uint64_t beginnings_ = 0;
    // Breadth first: shorter strings before longer ones. None without keys.
    std::vector<Node> nodes_;
};

}  // namespace sealkeeper

#endif
