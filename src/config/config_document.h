// The parsed configuration file: named sections, each with one table of keys and values per type.
// Nothing here knows what a key means.
#ifndef SEALKEEPER_CONFIG_CONFIG_DOCUMENT_H
#define SEALKEEPER_CONFIG_CONFIG_DOCUMENT_H

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace sealkeeper {

using StringList = std::vector<std::string>;
using StringPairs = std::map<std::string, std::string>;

// Values of one type by key. Keys are stored in lower case; a look-up does not convert its key.
template <typename Value>
class ConfigTable {
  public:
    [[nodiscard]] bool Has(std::string_view key) const { return values_.contains(key); }

    // The value of `key`. A missing key is added with a default value (false, 0, empty).
    [[nodiscard]] Value& Get(std::string_view key) { return values_[std::string(key)]; }

  private:
    // A transparent comparison, so that `Has` makes no string.
    std::map<std::string, Value, std::less<>> values_;
};

// One key may be in several tables: a number is stored as an integer and as a flag.
struct ConfigSection {
    ConfigTable<bool> flags;
    // Signed 32-bit numbers, sign-extended.
    ConfigTable<std::int64_t> integers;
    ConfigTable<std::string> strings;
    ConfigTable<StringList> stringLists;
    ConfigTable<StringPairs> stringPairTables;
};

class ConfigDocument {
  public:
    // Parses the file at `path` into the document. Returns false for an empty path, for a file that
    // cannot be read, and when `ParseConfigText` does.
    [[nodiscard]] bool LoadConfigFile(const std::string& path);
    [[nodiscard]] bool LoadConfigFile(const char* path);

    // Adds the content of `text` to the document; sections of the same name are merged. Text that
    // does not fit the grammar silently ends the scan, and what was read before it is kept. Returns
    // false only for an empty text and for a string list element that contains a line feed.
    [[nodiscard]] bool ParseConfigText(std::string_view text);

    // The section called `name`, which is lower-cased in place. When there is none, an empty
    // section that is not part of the document; the reference to it is valid until the next call.
    [[nodiscard]] ConfigSection& GetSection(std::string& name);

    // The section called `name`, already lower-cased, created when there is none.
    [[nodiscard]] ConfigSection& OpenSection(const std::string& name);

  private:
    std::map<std::string, ConfigSection> sections_;
    ConfigSection missingSection_;
};

}  // namespace sealkeeper

#endif
