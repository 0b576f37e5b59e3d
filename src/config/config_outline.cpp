#include "config/config_outline.h"

#include "config/config_scanner.h"

namespace sealkeeper {

bool OutlineConfigText(std::string_view text, ConfigDocument& document, ConfigOutline& outline) {
    if (text.empty()) {
        return false;
    }
    ConfigScanner scanner(text, document, &outline);
    return scanner.Scan();
}

std::vector<const OutlinedValue*> ValuesOf(const ConfigOutline& outline, std::string_view section,
                                           std::string_view key) {
    std::vector<const OutlinedValue*> values;
    for (const OutlinedValue& value : outline.values) {
        if (outline.keys[value.key].name == key &&
            outline.sections[value.section].name == section) {
            values.push_back(&value);
        }
    }
    return values;
}

}  // namespace sealkeeper
