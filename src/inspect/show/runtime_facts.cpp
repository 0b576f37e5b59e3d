#include "inspect/show/runtime_facts.h"

#include <algorithm>
#include <cstddef>
#include <span>
#include <utility>

#include "inspect/report/hex_text.h"
#include "inspect/report/logged_error.h"
#include "inspect/report/number_text.h"
#include "inspect/show/signature_facts.h"
#include "platform/little_endian.h"
#include "runtime/anti_tamper_solutions.h"
#include "runtime/runtime_configuration_format.h"
#include "runtime/runtime_configuration_reader.h"

namespace sealkeeper {
namespace {

std::string NameIn(const RuntimeConfiguration& configuration) {
    const auto& field = configuration.crashReporterName;
    return {field.begin(), std::find(field.begin(), field.end(), '\0')};
}

std::string SolutionMeaning(std::uint32_t solution, std::vector<std::string>& notes) {
    const auto names = AntiTamperSolutionNames();
    if (solution >= names.size()) {
        notes.push_back("anti-tamper solution " + GroupedNumber(solution) + " is not known");
        return {};
    }
    return names[solution];
}

std::vector<ShownField> FieldsOf(std::span<const std::uint8_t> plain,
                                 const RuntimeConfiguration& configuration,
                                 std::vector<std::string>& notes) {
    constexpr std::size_t kNumber = sizeof(std::uint32_t);
    const auto area =
        plain.subspan(runtime_file::kSignatureOffset, signed_file::kSignatureAreaBytes);
    const auto length =
        LoadLittleEndian<std::uint32_t>(plain.subspan(runtime_file::kSignatureLengthOffset));
    return {
        {"magic",
         runtime_file::kMagicOffset,
         signed_file::kMagic.size(),
         SeparatedHexText(signed_file::kMagic),
         {}},
        {"signature area", runtime_file::kSignatureOffset, area.size(), HexText(area), {}},
        {"signature length",
         runtime_file::kSignatureLengthOffset,
         kNumber,
         std::uint64_t{length},
         {}},
        {"version",
         runtime_file::kVersionOffset,
         kNumber,
         std::uint64_t{configuration.version},
         {}},
        {"instances", runtime_file::kMaxActiveInstancesOffset, kNumber,
         std::uint64_t{configuration.maxActiveInstances}, "of the game at once, at the most"},
        {"crash reporter",
         runtime_file::kCrashReporterNameOffset,
         kCrashReporterNameBytes,
         NameIn(configuration),
         {}},
        {"anti-tamper solution", runtime_file::kAntiTamperSolutionOffset, kNumber,
         std::uint64_t{configuration.antiTamperSolution},
         SolutionMeaning(configuration.antiTamperSolution, notes)},
    };
}

}  // namespace

std::optional<InvalidReason> AddRuntimeFacts(std::vector<std::uint8_t> stored,
                                             const std::optional<std::string>& productId,
                                             ShownFile& shown) {
    std::vector<std::uint8_t> plain = stored;
    RuntimeConfiguration configuration;
    InvalidReason reason;
    const ResultCode code = ListRuntimeConfiguration(plain, configuration, &reason);
    if (code == ResultCode::FileInvalid) {
        return reason;
    }
    shown.kind = ShownKind::RuntimeConfiguration;
    shown.fields = FieldsOf(plain, configuration, shown.notes);
    if (plain.size() > runtime_file::kSizeBytes) {
        shown.notes.push_back("the file has " +
                              CountText(plain.size() - runtime_file::kSizeBytes, "byte") +
                              " after its settings, all of which count as signed");
    }
    shown.signature = CheckRuntimeSignature(shown.path, std::move(stored), productId);
    return code == ResultCode::Ok ? std::nullopt : std::optional(reason);
}

}  // namespace sealkeeper
