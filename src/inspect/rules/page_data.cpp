#include "inspect/rules/page_data.h"

#include <cstddef>
#include <map>
#include <nlohmann/json.hpp>
#include <utility>

#include "inspect/report/hex_text.h"
#include "inspect/report/json.h"
#include "inspect/report/utf8_text.h"

namespace sealkeeper {
namespace {

using StateIndices = std::map<LeftOutReason, std::size_t>;

constexpr std::size_t kSealedIndex = 0;

Json FileTuple(const JudgedFile& file, const StateIndices& indices) {
    const std::string path = WellFormedUtf8(file.path);
    Json tuple = {path, file.sizeBytes, file.leftOut ? indices.at(*file.leftOut) : kSealedIndex};
    if (path != file.path) {
        tuple.push_back(HexText(file.path));
    }
    return tuple;
}

// In JSON, "<" occurs only inside strings, where it may be escaped. Without it nothing can end the
// script element, or begin a comment in it.
std::string WithoutLessThan(const std::string& json) {
    std::string text;
    text.reserve(json.size());
    for (const char character : json) {
        if (character == '<') {
            text += "\\u003c";
        } else {
            text += character;
        }
    }
    return text;
}

}  // namespace

std::string PageData(const RulesReport& report) {
    Json states = Json::array({"sealed"});
    StateIndices indices;
    for (const auto& [reason, total] : TotalsOf(report).leftOutBy) {
        indices[reason] = states.size();
        states.push_back(LeftOutReasonText(reason));
    }
    Json files = Json::array();
    for (const JudgedFile& file : report.files) {
        files.push_back(FileTuple(file, indices));
    }
    Json data = Json::object();
    data["states"] = std::move(states);
    data["files"] = std::move(files);
    return WithoutLessThan(data.dump());
}

}  // namespace sealkeeper
