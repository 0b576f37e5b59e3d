// The differences between two catalogues.
#ifndef SEALKEEPER_INSPECT_SHOW_CATALOGUE_DIFFERENCE_H
#define SEALKEEPER_INSPECT_SHOW_CATALOGUE_DIFFERENCE_H

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "catalogue/catalogue_reader.h"
#include "inspect/show/stored_path.h"
#include "runtime/invalid_reason.h"

namespace sealkeeper {

struct ComparedEntry {
    // As in `StoredPath`.
    std::string path;
    StoredPath::Form form = StoredPath::Form::Plain;
    // The whole path field, if its text alone is ambiguous; else empty.
    std::vector<std::uint8_t> oddField;
    std::uint64_t sizeBytes = 0;
    // All digests, concatenated.
    std::vector<std::uint8_t> digests;
};

// The note beside an aliased path; empty for others.
[[nodiscard]] const char* AliasMark(const ComparedEntry& entry);

struct ComparedCatalogue {
    CatalogueFile file;
    // In file order.
    std::vector<ComparedEntry> entries;
};

struct ChangedEntry {
    ComparedEntry before;
    ComparedEntry after;
};

// Numbers of files and bytes. They saturate instead of overflowing.
struct CatalogueSum {
    std::uint64_t files = 0;
    std::uint64_t bytes = 0;
};

// If a path is listed several times, identical entries are paired first. The rest is paired in
// order and counts as changed; what is left over was added or removed.
struct CatalogueDifference {
    // Each sorted by path.
    std::vector<ComparedEntry> added;
    std::vector<ComparedEntry> removed;
    std::vector<ChangedEntry> changed;
    std::uint64_t unchanged = 0;
    CatalogueSum before;
    CatalogueSum after;
    // Differences outside the entries: "signature", "revocation list" and so on.
    std::vector<std::string> others;

    [[nodiscard]] bool HasEntries() const {
        return !added.empty() || !removed.empty() || !changed.empty();
    }
};

// The entries of `file`. Empty if the entry block is not sound; then `reason` says what is wrong.
[[nodiscard]] std::optional<std::vector<ComparedEntry>> EntriesToCompare(const CatalogueFile& file,
                                                                         InvalidReason& reason);

[[nodiscard]] CatalogueSum SumOf(const std::vector<ComparedEntry>& entries);

[[nodiscard]] CatalogueDifference DifferenceOf(ComparedCatalogue before, ComparedCatalogue after);

// How many digests of two entries differ. Digests that only one of them has count too.
[[nodiscard]] std::uint64_t DifferingDigests(const ChangedEntry& entry);

}  // namespace sealkeeper

#endif
