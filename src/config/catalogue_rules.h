// The format version of the configuration file and its section "search_options".
#ifndef SEALKEEPER_CONFIG_CATALOGUE_RULES_H
#define SEALKEEPER_CONFIG_CATALOGUE_RULES_H

#include <cstdint>
#include <string>
#include <string_view>

#include "app/result_code.h"
#include "config/catalogue_config.h"
#include "config/config_document.h"

namespace sealkeeper {

inline constexpr std::int64_t kSupportedConfigVersion = 2;

// Of exclude_size_threshold.
inline constexpr std::uint64_t kRecommendedMaximumMegabytes = 1024;
inline constexpr std::uint64_t kRecommendedMinimumMegabytes = 10;

// Loads the configuration file at `path` into `document` and checks its format version. Anything
// but a readable file of version 2 fails with `InitFailedConfig`, logged.
ResultCode CheckConfigVersion(const std::string& path, ConfigDocument& document);

// The same with `text` as the contents of that file.
ResultCode CheckConfigText(const std::string& path, std::string_view text,
                           ConfigDocument& document);

// Checks the format version of a loaded document. Any version but 2 fails with `InitFailedConfig`,
// logged.
ResultCode CheckDocumentVersion(ConfigDocument& document);

// Validates the section "search_options" and fills `config` from it. Fails at the first error with
// `InitFailedConfig`, logged; `config` may then be partly filled.
ResultCode ReadCatalogueRules(ConfigSection& searchOptions, CatalogueConfig& config);

}  // namespace sealkeeper

#endif
