#include "inspect/credentials/finding_json.h"

#include <nlohmann/json.hpp>

namespace sealkeeper {

Json FindingsJson(const CredentialFindings& findings) {
    Json array = Json::array();
    for (const CredentialFinding& finding : findings) {
        Json object = {{"severity", SeverityText(finding.severity)},
                       {"name", finding.name},
                       {"message", finding.message},
                       {"cure", finding.cure.text}};
        if (!finding.cure.command.empty()) {
            object["command"] = finding.cure.command;
        }
        if (finding.code) {
            AddCode(object, *finding.code);
        }
        array.push_back(std::move(object));
    }
    return array;
}

}  // namespace sealkeeper
