#include "inspect/rules/html_text.h"

#include "inspect/report/terminal_safe_text.h"
#include "inspect/report/utf8_text.h"

namespace sealkeeper {
namespace {

// The character reference for `character`; empty if it needs none.
std::string_view ReferenceTo(char character) {
    switch (character) {
        case '&':
            return "&amp;";
        case '<':
            return "&lt;";
        case '>':
            return "&gt;";
        case '"':
            return "&quot;";
        default:
            return {};
    }
}

}  // namespace

std::string HtmlText(std::string_view text) {
    std::string html;
    for (const char character : WellFormedUtf8(TerminalSafeText(text))) {
        const std::string_view reference = ReferenceTo(character);
        if (reference.empty()) {
            html += character;
        } else {
            html += reference;
        }
    }
    return html;
}

}  // namespace sealkeeper
