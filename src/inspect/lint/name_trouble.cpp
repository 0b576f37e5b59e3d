#include "inspect/lint/name_trouble.h"

#include <vector>

#include "inspect/lint/nearest_name.h"
#include "inspect/lint/shown_text.h"

namespace sealkeeper {
namespace {

bool HasCommentMark(std::string_view name) {
    return name.find('#') != std::string_view::npos || name.find("//") != std::string_view::npos ||
           name.find("/*") != std::string_view::npos;
}

Trouble EndOfNoComment() {
    return {"This '*/' ends no comment and is read as a name", "Remove it.", true};
}

Trouble CommentMarkInName(std::string_view name) {
    return {"The comment mark in " + ShownName(name) + " is read as a part of the name",
            "Write a blank before the comment.", true};
}

std::string MoveInto(std::string_view section) {
    return "Move it into the braces of " + ShownName(section) + ".";
}

std::string CureByName(std::string_view name, const std::vector<std::string>& names) {
    const std::string nearest = NearestName(name, names);
    return nearest.empty() ? "Remove it, or write one of " + ShownNames(names) + "."
                           : "Write " + ShownName(nearest) + " if that is meant.";
}

}  // namespace

bool StartsWithByteOrderMark(std::string_view text) {
    return text.starts_with("\xEF\xBB\xBF");
}

const KnownKey* FindKeyAtStart(std::string_view word) {
    return FindKnownKey(word.substr(0, word.find_first_of("=;")));
}

Trouble SectionNameTrouble(std::string_view name) {
    if (name.starts_with("*/")) {
        return EndOfNoComment();
    }
    if (name.starts_with('}')) {
        return {"This '}' closes no section and is read as the name of one", "Remove it.", true};
    }
    if (const KnownKey* const key = FindKeyAtStart(name); key != nullptr) {
        return {ShownName(key->name) +
                    " stands outside of any section and is taken for the name of one",
                MoveInto(key->section)};
    }
    if (name.find('{') != std::string_view::npos) {
        return {"The name of this section is read as " + ShownName(name),
                "Write a blank before the '{'.", true};
    }
    if (HasCommentMark(name)) {
        return CommentMarkInName(name);
    }
    return {ShownName(name) + " is no section that the tool knows",
            CureByName(name, KnownSectionNames())};
}

Trouble KeyNameTrouble(std::string_view section, std::string_view name) {
    if (name.starts_with("*/")) {
        return EndOfNoComment();
    }
    if (const KnownKey* const key = FindKnownKey(name); key != nullptr) {
        return {ShownName(name) + " belongs in " + ShownName(key->section), MoveInto(key->section)};
    }
    if (HasCommentMark(name)) {
        return CommentMarkInName(name);
    }
    return {ShownName(name) + " is no key that the tool knows in " + ShownName(section),
            CureByName(name, KnownKeyNames(section))};
}

}  // namespace sealkeeper
