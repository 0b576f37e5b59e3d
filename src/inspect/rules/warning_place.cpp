#include "inspect/rules/warning_place.h"

namespace sealkeeper {

std::string WarningPlace(const RulesReport& report, const RuleWarning& warning) {
    if (warning.line == 0) {
        return report.configFile;
    }
    return report.configFile + ":" + std::to_string(warning.line) + ":" +
           std::to_string(warning.column);
}

}  // namespace sealkeeper
