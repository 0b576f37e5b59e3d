#include "inspect/rules/sample_report.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <random>
#include <string>
#include <string_view>

namespace sealkeeper::test {
namespace {

using Random = std::mt19937;

// A kind of files, with its share in thousandths.
struct Kind {
    std::string_view folder;
    std::string_view suffix;
    std::size_t share;
    double typicalBytes;
    std::optional<LeftOutReason> leftOut;
};

constexpr std::array<Kind, 15> kKinds = {{
    {"data/textures", ".dds", 259, 400e3, {}},
    {"data/models", ".mesh", 140, 150e3, {}},
    {"data/sounds/effects", ".ogg", 120, 60e3, {}},
    {"data/sounds/music", ".ogg", 20, 4e6, {}},
    {"data/maps", ".map", 80, 900e3, {}},
    {"scripts", ".lua", 100, 8e3, {}},
    {"bin", ".so", 10, 3e6, {}},
    {"art/sources", ".psd", 60, 2e6, LeftOutReason::ExcludedExtension},
    {"saves", ".sav", 50, 50e3, LeftOutReason::ExcludedPath},
    {".git/objects", "", 70, 20e3, LeftOutReason::Hidden},
    {"doc", "", 30, 4e3, LeftOutReason::NoExtension},
    {"mods/community", ".zip", 30, 1e6, LeftOutReason::NotIncluded},
    {"bin/versions", ".so", 20, 30, LeftOutReason::Link},
    {"bin/old", ".so", 10, 30, LeftOutReason::DanglingLink},
    {"video", ".pak", 1, 300e6, LeftOutReason::TooLarge},
}};

const Kind& KindOf(std::size_t index) {
    std::size_t place = index % 1000;
    for (const Kind& kind : kKinds) {
        if (place < kind.share) {
            return kind;
        }
        place -= kind.share;
    }
    return kKinds.front();
}

std::uint64_t SizeOf(const Kind& kind, Random& random) {
    // Many small files and few large ones. The distributions of <random> are not used, since they
    // differ between libraries.
    constexpr double kSpread = 8;
    const double uniform = static_cast<double>(random()) / static_cast<double>(Random::max());
    return static_cast<std::uint64_t>(kind.typicalBytes * std::pow(kSpread, 2 * uniform - 1));
}

JudgedFile MakeFile(std::size_t index, Random& random) {
    constexpr std::size_t kFoldersOfAKind = 23;
    const Kind& kind = KindOf(index);
    std::string path(kind.folder);
    path += "/set_" + std::to_string(index % kFoldersOfAKind) + "/item_" + std::to_string(index);
    path += kind.suffix;
    return {std::move(path), SizeOf(kind, random), kind.leftOut};
}

void AddFile(RulesReport& report, std::string path, std::uint64_t sizeBytes,
             std::optional<LeftOutReason> leftOut) {
    report.files.push_back({std::move(path), sizeBytes, leftOut});
}

void SortByPath(RulesReport& report) {
    std::sort(
        report.files.begin(), report.files.end(),
        [](const JudgedFile& left, const JudgedFile& right) { return left.path < right.path; });
}

// Each is executed if a browser takes it for markup or script. In order of paths, the one that ends
// a script element comes first: after the one that begins a comment it would have no effect.
constexpr std::array<std::string_view, 16> kHostileTexts = {
    "0</script><script>window.broken = 1</script>",
    "<!--<script>",
    "<img src=x onerror=\"window.broken = 2\">",
    "\"><svg onload=window.broken=3>",
    "' onmouseover='window.broken = 4",
    "&lt;b&gt;&amp;",
    "]]>{{data}}{{script}}",
    "__proto__",
    "constructor",
    "line\nfeed\ttab\r\x01\x1b[31m\x7f",
    "separators \u2028 and \u2029",
    "turned \u202Egpj.exe",
    "no UTF-8 \xff\xc3(\xed\xa0\x80",
    "C1 \u0085 and noncharacter \uFFFE",
    "\\u003cscript\\u003e\\",
    "\U0001F3AE game \u00e4\u6f22\u5b57",
};

}  // namespace

RulesReport SampleReport(std::size_t fileCount) {
    RulesReport report{"game.cfg", "/home/studio/castle", {}, {}};
    AddFile(report, "locked", 0, LeftOutReason::Unlistable);
    AddFile(report, "pipe", 0, LeftOutReason::NotRegularFile);
    AddFile(report, "closed/tool", 0, LeftOutReason::Unreachable);
    Random random;
    while (report.files.size() < fileCount) {
        report.files.push_back(MakeFile(report.files.size(), random));
    }
    report.files.resize(fileCount);
    SortByPath(report);
    report.warnings = {
        {0, 0, "The directory 'locked' must not be read.", "Give yourself the right to list it."},
        {4, 5, "The pattern 'data/[a]*' matches nothing.", "Remove it, or mend the path."},
        {12, 27, "'exclude_extension' is no key.", "Write 'exclude_extensions'."},
    };
    return report;
}

void AddHostileTexts(RulesReport& report) {
    std::uint64_t sizeBytes = 300'000'000;
    for (const std::string_view text : kHostileTexts) {
        AddFile(report, "hostile/" + std::string(text), sizeBytes++, {});
        report.warnings.push_back({20, 1, std::string(text), std::string(text)});
    }
    SortByPath(report);
}

}  // namespace sealkeeper::test
