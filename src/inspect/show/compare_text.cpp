#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "catalogue/catalogue_format.h"
#include "inspect/report/aligned_text.h"
#include "inspect/report/name_list.h"
#include "inspect/report/number_text.h"
#include "inspect/show/compare_report.h"

namespace sealkeeper {
namespace {

std::size_t SizeWidth(const CatalogueDifference& difference) {
    std::uint64_t largest = 0;
    for (const auto* entries : {&difference.added, &difference.removed}) {
        for (const ComparedEntry& entry : *entries) {
            largest = std::max(largest, entry.sizeBytes);
        }
    }
    for (const ChangedEntry& entry : difference.changed) {
        largest = std::max(largest, entry.after.sizeBytes);
    }
    return GroupedNumber(largest).size();
}

std::string EntryLine(char sign, const ComparedEntry& entry, std::size_t width,
                      const Console& console) {
    return std::string(1, sign) + " " + AlignedRight(GroupedNumber(entry.sizeBytes), width) + "  " +
           console.Foreign(entry.path) + AliasMark(entry);
}

std::string ChangeText(const ChangedEntry& entry) {
    if (entry.before.sizeBytes != entry.after.sizeBytes) {
        return "  (was " + GroupedNumber(entry.before.sizeBytes) + ")";
    }
    const std::size_t longest = std::max(entry.before.digests.size(), entry.after.digests.size());
    return "  (" + GroupedNumber(DifferingDigests(entry)) + " of " +
           CountText(longest / entry_record::kDigestBytes, "chunk") + ")";
}

void WriteEntries(const CatalogueDifference& difference, Console& console) {
    const std::size_t width = SizeWidth(difference);
    for (const ComparedEntry& entry : difference.removed) {
        console.Write(console.Styled(Style::Bad, EntryLine('-', entry, width, console)) + "\n");
    }
    for (const ComparedEntry& entry : difference.added) {
        console.Write(console.Styled(Style::Good, EntryLine('+', entry, width, console)) + "\n");
    }
    for (const ChangedEntry& entry : difference.changed) {
        console.Write(console.Styled(Style::Warning, EntryLine('~', entry.after, width, console)) +
                      ChangeText(entry) + "\n");
    }
    console.Write("\n");
}

// "3 removed (1,234 bytes)".
std::string CountOf(const std::vector<ComparedEntry>& entries, const char* what) {
    const CatalogueSum sum = SumOf(entries);
    return GroupedNumber(sum.files) + " " + what +
           (sum.files == 0 ? "" : " (" + CountText(sum.bytes, "byte") + ")");
}

std::string SumText(const CatalogueSum& sum) {
    return CountText(sum.files, "file") + ", " + CountText(sum.bytes, "byte");
}

std::string SummaryText(const CatalogueDifference& difference) {
    std::string text = CountOf(difference.removed, "removed") + ", " +
                       CountOf(difference.added, "added") + ", " +
                       GroupedNumber(difference.changed.size()) + " changed, " +
                       GroupedNumber(difference.unchanged) + " the same\n" +
                       SumText(difference.before) + " -> " + SumText(difference.after) + "\n";
    // Any difference changes the signature, so that alone says nothing.
    std::vector<std::string> others = difference.others;
    std::erase(others, "signature");
    return others.empty() ? text : text + "Also different: " + NameList(others) + "\n";
}

std::string SameEntriesText(const CatalogueDifference& difference) {
    const std::string sum = SumText(difference.after);
    if (difference.others.empty()) {
        return "The catalogues are the same: " + sum + "\n";
    }
    return "The entries are the same: " + sum + "\nDifferent: " + NameList(difference.others) +
           "\n";
}

}  // namespace

void WriteCompareText(const ComparedPaths& paths, const CatalogueDifference& difference,
                      Console& console) {
    console.Write(console.Styled(Style::Strong, console.Foreign(paths.before) + " -> " +
                                                    console.Foreign(paths.after)) +
                  "\n\n");
    if (!difference.HasEntries()) {
        console.Write(SameEntriesText(difference));
        return;
    }
    WriteEntries(difference, console);
    console.Write(SummaryText(difference));
}

}  // namespace sealkeeper
