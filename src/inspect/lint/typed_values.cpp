#include "inspect/lint/typed_values.h"

#include <utility>

namespace sealkeeper {

std::vector<const OutlinedValue*> ValuesOfKind(const LintedText& linted, std::string_view section,
                                               std::string_view key, ConfigValueKind kind) {
    std::vector<const OutlinedValue*> values = ValuesOf(linted.Outline(), section, key);
    std::erase_if(values, [kind](const OutlinedValue* value) { return value->kind != kind; });
    return values;
}

std::vector<OutlinedText> ElementsOf(const LintedText& linted, std::string_view section,
                                     std::string_view key) {
    std::vector<OutlinedText> elements;
    for (const OutlinedValue* list : ValuesOfKind(linted, section, key, ConfigValueKind::List)) {
        elements.insert(elements.end(), list->texts.begin(), list->texts.end());
    }
    return elements;
}

void AddAtSection(const LintedText& linted, std::string_view section, std::string message,
                  std::string cure, LintFindings& findings) {
    const auto& sections = linted.Outline().sections;
    for (auto found = sections.rbegin(); found != sections.rend(); ++found) {
        if (found->name == section) {
            findings.Add(found->begin, std::move(message), std::move(cure));
            return;
        }
    }
    findings.AddWithoutPlace(std::move(message), std::move(cure));
}

}  // namespace sealkeeper
