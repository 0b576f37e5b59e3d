// What the page is made of, from the files in page/; the build writes the source file.
#ifndef SEALKEEPER_INSPECT_RULES_PAGE_ASSETS_H
#define SEALKEEPER_INSPECT_RULES_PAGE_ASSETS_H

#include <string_view>

namespace sealkeeper {

struct PageAssets {
    // HTML with places written as "{{name}}".
    std::string_view markup;
    std::string_view style;
    std::string_view script;
    // The SHA-256 of the two in Base64, as a Content-Security-Policy names them.
    std::string_view styleHash;
    std::string_view scriptHash;
};

extern const PageAssets kRulesPageAssets;

}  // namespace sealkeeper

#endif
