// Ranges of numbers.
#include <cstdint>
#include <limits>
#include <string>

#include "config/catalogue_rules.h"
#include "config/config_names.h"
#include "inspect/lint/known_keys.h"
#include "inspect/lint/leading_digits.h"
#include "inspect/lint/lint_rules.h"
#include "inspect/lint/shown_text.h"
#include "inspect/lint/typed_values.h"

namespace sealkeeper {
namespace {

constexpr std::uint64_t kLargestSigned = std::numeric_limits<std::int32_t>::max();
constexpr std::uint64_t kLargestUnsigned = std::numeric_limits<std::uint32_t>::max();
constexpr auto kLeastMegabytes = static_cast<std::int64_t>(kRecommendedMinimumMegabytes);
constexpr auto kMostMegabytes = static_cast<std::int64_t>(kRecommendedMaximumMegabytes);
// A file of one terabyte. A larger number was most likely meant as bytes.
constexpr std::int64_t kMostCredibleMegabytes = 1'000'000;
constexpr std::int64_t kBytesInMegabyte = 1'000'000;

std::string_view DigitsOf(const LintedText& linted, const OutlinedValue& value) {
    return LeadingDigits(linted.Part(value.begin, value.end));
}

// The number as written; anything larger becomes `kLargestUnsigned` + 1.
std::uint64_t WrittenNumber(std::string_view digits) {
    std::uint64_t number = 0;
    for (const char digit : digits) {
        number = number * 10 + static_cast<std::uint64_t>(digit - '0');
        if (number > kLargestUnsigned) {
            return kLargestUnsigned + 1;
        }
    }
    return number;
}

bool IsWrapped(const LintedText& linted, const OutlinedValue& value, std::string_view key) {
    // Only this one is stored unsigned.
    const std::uint64_t largest = key == kMaxInstancesKey ? kLargestUnsigned : kLargestSigned;
    return WrittenNumber(DigitsOf(linted, value)) > largest;
}

void LintLargeNumber(const LintedText& linted, const OutlinedValue& value, const KnownKey& key,
                     LintFindings& findings) {
    const bool hidesAll = key.name == kSizeThresholdKey && value.number < 0;
    const std::int64_t taken =
        key.name == kMaxInstancesKey
            ? static_cast<std::int64_t>(static_cast<std::uint32_t>(value.number))
            : value.number;
    findings.Add(value.begin,
                 ShownName(DigitsOf(linted, value)) + " is too large for a number and is read as " +
                     std::to_string(taken) +
                     (hidesAll ? ", so no file that is found in a directory is hashed." : "."),
                 "Write a smaller number, as in '" + std::string(key.name) + " = " +
                     std::string(key.example) + "'.");
}

std::string RecommendedMegabytes() {
    return "Write " + std::to_string(kLeastMegabytes) + " to " + std::to_string(kMostMegabytes) +
           " megabytes, unless this is meant.";
}

void LintMegabytes(const OutlinedValue& value, LintFindings& findings) {
    const std::int64_t megabytes = value.number;
    const std::string limit = std::to_string(megabytes);
    if (megabytes == 0) {
        findings.Add(
            value.begin,
            "A size threshold of 0 switches the rule off, so that files of any size are hashed.",
            RecommendedMegabytes());
    } else if (megabytes < kLeastMegabytes) {
        findings.Add(value.begin,
                     "The size threshold leaves out every file above " + limit +
                         " MB that is found in a directory.",
                     RecommendedMegabytes());
    } else if (megabytes > kMostCredibleMegabytes) {
        const std::int64_t meant = (megabytes + kBytesInMegabyte - 1) / kBytesInMegabyte;
        findings.Add(
            value.begin,
            "The size threshold is in megabytes, and " + limit +
                " of them are more than any file has.",
            "Write 'exclude_size_threshold = " + std::to_string(meant) + ";' if bytes were meant.");
    } else if (megabytes > kMostMegabytes) {
        findings.Add(value.begin,
                     "The size threshold of " + limit + " MB is above the recommended maximum of " +
                         std::to_string(kMostMegabytes) + " MB.",
                     RecommendedMegabytes());
    }
}

}  // namespace

void LintLargeNumbers(const LintedText& linted, LintFindings& findings) {
    for (const OutlinedValue& value : linted.Outline().values) {
        const KnownKey* const key =
            FindKnownKey(linted.SectionOf(value).name, linted.KeyOf(value).name);
        if (key != nullptr && key->kind == ConfigValueKind::Number &&
            value.kind == ConfigValueKind::Number && IsWrapped(linted, value, key->name)) {
            LintLargeNumber(linted, value, *key, findings);
        }
    }
}

void LintSizeThreshold(const LintedText& linted, LintFindings& findings) {
    for (const OutlinedValue* value :
         ValuesOfKind(linted, kSearchSection, kSizeThresholdKey, ConfigValueKind::Number)) {
        if (!IsWrapped(linted, *value, kSizeThresholdKey)) {
            LintMegabytes(*value, findings);
        }
    }
}

void LintMaxInstances(const LintedText& linted, LintFindings& findings) {
    for (const OutlinedValue* value :
         ValuesOfKind(linted, kRuntimeSection, kMaxInstancesKey, ConfigValueKind::Number)) {
        if (IsWrapped(linted, *value, kMaxInstancesKey)) {
            continue;
        }
        const auto instances = static_cast<std::uint32_t>(value->number);
        const std::string cure =
            "Write how many may run at once, as in 'max_active_game_instances = 1;'.";
        if (instances == 0) {
            findings.Add(value->begin, "The number of instances of the game that may run is 0.",
                         cure);
        } else if (value->number < 0) {
            findings.Add(value->begin,
                         "The number of instances of the game that may run is " +
                             std::to_string(instances) + ", which is hardly a limit.",
                         cure);
        }
    }
}

}  // namespace sealkeeper
