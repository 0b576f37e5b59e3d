#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "catalogue/catalogue_format.h"
#include "inspect/report/json.h"
#include "inspect/show/compare_report.h"
#include "inspect/show/json_stream.h"

namespace sealkeeper {
namespace {

Json SideJson(const std::string& path) {
    Json json = Json::object();
    AddFileName(json, "file", path);
    return json;
}

Json SideJson(const std::string& path, const CatalogueSum& sum) {
    Json json = SideJson(path);
    json["files"] = sum.files;
    json["bytes"] = sum.bytes;
    return json;
}

Json EntryJson(const ComparedEntry& entry) {
    return {{"path", entry.path},
            {"isAliased", entry.form == StoredPath::Form::Aliased},
            {"bytes", entry.sizeBytes},
            {"chunks", entry.digests.size() / entry_record::kDigestBytes}};
}

Json ChangeJson(const ChangedEntry& entry) {
    Json json = EntryJson(entry.after);
    json["oldBytes"] = entry.before.sizeBytes;
    json["oldChunks"] = entry.before.digests.size() / entry_record::kDigestBytes;
    json["differingChunks"] = DifferingDigests(entry);
    return json;
}

template <typename Entry>
void WriteEntries(const char* name, const std::vector<Entry>& entries, Json (*toJson)(const Entry&),
                  JsonStream& stream) {
    stream.BeginArray(name);
    for (const Entry& entry : entries) {
        stream.Add(toJson(entry));
    }
    stream.EndArray();
}

}  // namespace

void WriteCompareJson(const ComparedPaths& paths, const CatalogueDifference& difference,
                      Console& console) {
    JsonStream stream(console, {{"old", SideJson(paths.before, difference.before)},
                                {"new", SideJson(paths.after, difference.after)},
                                {"hasSameEntries", !difference.HasEntries()},
                                {"unchanged", difference.unchanged},
                                {"otherDifferences", difference.others}});
    WriteEntries("removed", difference.removed, EntryJson, stream);
    WriteEntries("added", difference.added, EntryJson, stream);
    WriteEntries("changed", difference.changed, ChangeJson, stream);
    stream.Finish();
}

void WriteCompareFailureJson(const ComparedPaths& paths, const std::string& failure, int status,
                             Console& console) {
    Json json = {{"old", SideJson(paths.before)}, {"new", SideJson(paths.after)}};
    AddFailure(json, failure, status);
    console.Write(JsonText(json));
}

}  // namespace sealkeeper
