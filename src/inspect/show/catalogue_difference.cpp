#include "inspect/show/catalogue_difference.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <span>
#include <tuple>
#include <utility>

#include "catalogue/catalogue_format.h"
#include "inspect/report/capped_sum.h"
#include "inspect/show/entry_walk.h"

namespace sealkeeper {
namespace {

using Entries = std::vector<ComparedEntry>;

auto PathKey(const ComparedEntry& entry) {
    return std::tie(entry.path, entry.form, entry.oddField);
}

auto WholeKey(const ComparedEntry& entry) {
    return std::tuple_cat(PathKey(entry), std::tie(entry.sizeBytes, entry.digests));
}

bool IsBefore(const ComparedEntry& a, const ComparedEntry& b) {
    return WholeKey(a) < WholeKey(b);
}

bool IsSame(const ComparedEntry& a, const ComparedEntry& b) {
    return WholeKey(a) == WholeKey(b);
}

ComparedEntry EntryOf(const WalkedEntry& walked) {
    ComparedEntry entry{walked.path.spelt, walked.path.form, {}, walked.record.FileSizeBytes(), {}};
    if (walked.path.form == StoredPath::Form::BytesPastEnd || walked.path.hasLoneSurrogate) {
        const auto field = walked.record.PathField();
        entry.oddField.assign(field.begin(), field.end());
    }
    return entry;
}

// The entries that `others` lacks. Both are sorted by the whole key.
Entries Lacking(const Entries& entries, const Entries& others) {
    Entries lacking;
    std::set_difference(entries.begin(), entries.end(), others.begin(), others.end(),
                        std::back_inserter(lacking), IsBefore);
    return lacking;
}

// Sorts what only one side has into added, removed and changed. Both sides are sorted.
void ShareOut(Entries before, Entries after, CatalogueDifference& difference) {
    auto old = before.begin();
    auto now = after.begin();
    while (old != before.end() || now != after.end()) {
        const bool isAdded =
            old == before.end() || (now != after.end() && PathKey(*now) < PathKey(*old));
        if (isAdded) {
            difference.added.push_back(std::move(*now++));
        } else if (now == after.end() || PathKey(*old) < PathKey(*now)) {
            difference.removed.push_back(std::move(*old++));
        } else {
            difference.changed.push_back({std::move(*old++), std::move(*now++)});
        }
    }
}

bool DifferIn(std::span<const std::uint8_t> a, std::span<const std::uint8_t> b) {
    return !std::equal(a.begin(), a.end(), b.begin(), b.end());
}

// Differences outside the entries. `hasSameEntries` ignores their order, `hasSameOrder` does not.
std::vector<std::string> OthersOf(const CatalogueFile& before, const CatalogueFile& after,
                                  bool hasSameEntries, bool hasSameOrder) {
    namespace header = catalogue_header;
    struct Part {
        const char* name;
        std::size_t start;
        std::size_t end;
    };
    constexpr Part kParts[] = {
        {"signature layout", header::kSignatureLayoutOffset, header::kSignatureOffset},
        {"signature", header::kSignatureOffset, header::kCrlLengthOffset}};
    std::vector<std::string> others;
    for (const Part& part : kParts) {
        const auto in = [&part](const CatalogueFile& file) {
            return std::span(file.bytes).subspan(part.start, part.end - part.start);
        };
        if (DifferIn(in(before), in(after))) {
            others.emplace_back(part.name);
        }
    }
    if (DifferIn(CrlBlockOf(before), CrlBlockOf(after))) {
        others.emplace_back("revocation list");
    }
    if (hasSameEntries && !hasSameOrder) {
        others.emplace_back("order of entries");
    }
    if (others.empty() && hasSameEntries && before.bytes != after.bytes) {
        others.emplace_back("bytes that belong to no file");
    }
    return others;
}

}  // namespace

const char* AliasMark(const ComparedEntry& entry) {
    return entry.form == StoredPath::Form::Aliased ? " (aliased)" : "";
}

std::optional<Entries> EntriesToCompare(const CatalogueFile& file, InvalidReason& reason) {
    auto walk = EntryWalk::Begin(file, &reason);
    if (!walk) {
        return std::nullopt;
    }
    Entries entries;
    WalkedEntry walked;
    while (walk->Next(walked)) {
        ComparedEntry entry = EntryOf(walked);
        Sha256Digest digest;
        while (walk->NextDigest(digest)) {
            entry.digests.insert(entry.digests.end(), digest.begin(), digest.end());
        }
        entries.push_back(std::move(entry));
    }
    return walk->HasEnded() ? std::optional(std::move(entries)) : std::nullopt;
}

CatalogueSum SumOf(const Entries& entries) {
    CatalogueSum sum;
    for (const ComparedEntry& entry : entries) {
        ++sum.files;
        sum.bytes = CappedSum(sum.bytes, entry.sizeBytes);
    }
    return sum;
}

CatalogueDifference DifferenceOf(ComparedCatalogue before, ComparedCatalogue after) {
    CatalogueDifference difference;
    difference.before = SumOf(before.entries);
    difference.after = SumOf(after.entries);
    const bool hasSameOrder = std::equal(before.entries.begin(), before.entries.end(),
                                         after.entries.begin(), after.entries.end(), IsSame);
    std::sort(before.entries.begin(), before.entries.end(), IsBefore);
    std::sort(after.entries.begin(), after.entries.end(), IsBefore);
    Entries gone = Lacking(before.entries, after.entries);
    Entries come = Lacking(after.entries, before.entries);
    difference.unchanged = before.entries.size() - gone.size();
    const bool hasSameEntries = gone.empty() && come.empty();
    ShareOut(std::move(gone), std::move(come), difference);
    difference.others = OthersOf(before.file, after.file, hasSameEntries, hasSameOrder);
    return difference;
}

std::uint64_t DifferingDigests(const ChangedEntry& entry) {
    constexpr std::size_t kDigest = entry_record::kDigestBytes;
    const std::span<const std::uint8_t> before = entry.before.digests;
    const std::span<const std::uint8_t> after = entry.after.digests;
    const std::size_t shared = std::min(before.size(), after.size());
    std::uint64_t differing = (std::max(before.size(), after.size()) - shared) / kDigest;
    for (std::size_t at = 0; at < shared; at += kDigest) {
        if (DifferIn(before.subspan(at, kDigest), after.subspan(at, kDigest))) {
            ++differing;
        }
    }
    return differing;
}

}  // namespace sealkeeper
