#include "config/config_document.h"

#include "config/config_scanner.h"
#include "platform/ascii_case.h"
#include "platform/file_io.h"

namespace sealkeeper {

bool ConfigDocument::LoadConfigFile(const std::string& path) {
    if (path.empty()) {
        return false;
    }
    const auto bytes = ReadWholeFile(path);
    if (!bytes) {
        return false;
    }
    // The text is the file's bytes as they are.
    const auto* text = reinterpret_cast<const char*>(bytes->data());  // NOLINT
    return ParseConfigText({text, bytes->size()});
}

bool ConfigDocument::LoadConfigFile(const char* path) {
    return LoadConfigFile(std::string(path));
}

bool ConfigDocument::ParseConfigText(std::string_view text) {
    if (text.empty()) {
        return false;
    }
    ConfigScanner scanner(text, *this);
    return scanner.Scan();
}

ConfigSection& ConfigDocument::GetSection(std::string& name) {
    name = LowerCasedAscii(name);
    const auto found = sections_.find(name);
    if (found != sections_.end()) {
        return found->second;
    }
    // `ConfigTable::Get` adds missing keys, so an earlier caller may have left some.
    missingSection_ = {};
    return missingSection_;
}

ConfigSection& ConfigDocument::OpenSection(const std::string& name) {
    return sections_[name];
}

}  // namespace sealkeeper
