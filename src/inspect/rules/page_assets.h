// The parts of the page. The build generates the source file from the files in page/.
#ifndef SEALKEEPER_INSPECT_RULES_PAGE_ASSETS_H
#define SEALKEEPER_INSPECT_RULES_PAGE_ASSETS_H

#include <string_view>

namespace sealkeeper {

struct PageAssets {
    // HTML with placeholders written as "{{name}}".
    std::string_view markup;
    std::string_view style;
    std::string_view script;
    // The Base64 SHA-256 of style and script, in the form that a Content-Security-Policy uses.
    std::string_view styleHash;
    std::string_view scriptHash;
};

extern const PageAssets kRulesPageAssets;

}  // namespace sealkeeper

#endif
