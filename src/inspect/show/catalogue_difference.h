// In what two catalogues differ.
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
    // As `StoredPath` has them.
    std::string path;
    StoredPath::Form form = StoredPath::Form::Plain;
    // All of the path's field, where its text does not tell it from every other one.
    std::vector<std::uint8_t> oddField;
    std::uint64_t sizeBytes = 0;
    // One after the other.
    std::vector<std::uint8_t> digests;
};

// What a person reads beside the path where it is an alias; else nothing.
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

// Files and their bytes, the largest number where there would be more.
struct CatalogueSum {
    std::uint64_t files = 0;
    std::uint64_t bytes = 0;
};

// Where a path stands several times, the entries that are alike are taken out first, and what is
// left counts as changed as far as there is one on both sides.
struct CatalogueDifference {
    // Each sorted by path.
    std::vector<ComparedEntry> added;
    std::vector<ComparedEntry> removed;
    std::vector<ChangedEntry> changed;
    std::uint64_t unchanged = 0;
    CatalogueSum before;
    CatalogueSum after;
    // What is no entry: "signature", "revocation list" and so on.
    std::vector<std::string> others;

    [[nodiscard]] bool HasEntries() const {
        return !added.empty() || !removed.empty() || !changed.empty();
    }
};

// The entries of `file`; nothing when the entry block is not sound, and what is wrong is then in
// `reason`.
[[nodiscard]] std::optional<std::vector<ComparedEntry>> EntriesToCompare(const CatalogueFile& file,
                                                                         InvalidReason& reason);

[[nodiscard]] CatalogueSum SumOf(const std::vector<ComparedEntry>& entries);

[[nodiscard]] CatalogueDifference DifferenceOf(ComparedCatalogue before, ComparedCatalogue after);

// Of two entries of one size, how many digests differ, those that only one of them has included.
[[nodiscard]] std::uint64_t DifferingDigests(const ChangedEntry& entry);

}  // namespace sealkeeper

#endif
