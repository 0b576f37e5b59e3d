#include "inspect/show/show_text.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

#include "inspect/report/aligned_text.h"
#include "inspect/report/hex_text.h"
#include "inspect/report/number_text.h"
#include "inspect/show/entry_oddities.h"
#include "inspect/show/entry_walk.h"
#include "runtime/runtime_configuration.h"

namespace sealkeeper {
namespace {

// The column of the value in lines "name  value".
constexpr std::size_t kNameWidth = 17;

std::string Line(const std::string& name, const std::string& value) {
    return AlignedLeft(name, kNameWidth) + value + "\n";
}

const char* KindText(ShownKind kind) {
    switch (kind) {
        case ShownKind::Unknown:
            return "neither a catalogue nor a runtime.conf";
        case ShownKind::Catalogue:
            return "hash catalogue";
        case ShownKind::RuntimeConfiguration:
            return "runtime.conf";
    }
    return "";
}

std::string HeadText(const ShownFile& file, const Console& console) {
    const std::string verdict = file.invalid ? console.Styled(Style::Bad, "not valid")
                                             : console.Styled(Style::Good, "valid");
    return console.Styled(Style::Strong, console.Foreign(file.path)) + ": " + verdict + ", " +
           KindText(file.kind) + ", " + CountText(file.sizeBytes, "byte") + "\n";
}

std::string PlaceText(const InvalidFinding& finding) {
    std::string text = finding.field + ", at offset " + std::to_string(finding.offset);
    if (finding.isInEntryBlock) {
        text += " of the entry block once it is decompressed";
    }
    return text;
}

std::string InvalidText(const ShownFile& file, const Console& console) {
    if (!file.invalid) {
        return {};
    }
    std::string text = "\n" +
                       Line("Invalid", console.Styled(Style::Bad, PlaceText(*file.invalid))) +
                       Line("", file.invalid->message);
    for (const std::string& cause : file.invalid->likelyCauses) {
        text += Line(&cause == &file.invalid->likelyCauses.front() ? "Likely" : "", cause);
    }
    return text;
}

std::string ValueText(const ShownField& field, const Console& console) {
    if (const auto* number = std::get_if<std::uint64_t>(&field.value)) {
        return GroupedNumber(*number);
    }
    // A text longer than the longest valid name is no name: show only its start.
    constexpr std::size_t kLongestShown = kCrashReporterNameBytes;
    constexpr std::size_t kStartShown = 16;
    const std::string& text = std::get<std::string>(field.value);
    if (text.size() > kLongestShown) {
        return console.Foreign(text.substr(0, kStartShown)) + " ...";
    }
    return text.empty() ? "none" : console.Foreign(text);
}

bool IsStoredScrambled(const ShownFile& file) {
    return file.kind == ShownKind::RuntimeConfiguration;
}

std::string FieldsText(const ShownFile& file, const Console& console) {
    if (file.fields.empty()) {
        return {};
    }
    std::size_t width = 0;
    for (const ShownField& field : file.fields) {
        width = std::max(width, std::string_view(field.name).size());
    }
    std::string text =
        "\n" +
        console.Styled(
            Style::Faint,
            "  offset   size  field" +
                std::string(IsStoredScrambled(file) ? ", once the file is unscrambled" : "")) +
        "\n";
    for (const ShownField& field : file.fields) {
        text += AlignedRight(std::to_string(field.offset), 8) +
                AlignedRight(std::to_string(field.sizeBytes), 7) + "  " +
                AlignedLeft(field.name, width) + "  " + ValueText(field, console);
        text += field.meaning.empty() ? "\n" : "  (" + field.meaning + ")\n";
    }
    return text;
}

std::string SignatureText(const SignatureFacts& signature, const Console& console) {
    const std::string by = "'" + console.Foreign(signature.certificatePath) + "'";
    switch (signature.state) {
        case SignatureState::Good:
            return Line("Signature", console.Styled(Style::Good, "good") + ", by " + by);
        case SignatureState::Bad:
            return Line("Signature", console.Styled(Style::Bad, "bad") + ", by " + by) +
                   Line("", signature.reason);
        case SignatureState::CertificateMissing:
            return Line("Signature", console.Styled(Style::Warning, "not checked") + ": " + by +
                                         " cannot be read: " + signature.reason);
        case SignatureState::CertificateUnusable:
            return Line("Signature", console.Styled(Style::Warning, "not checked") + ": " + by +
                                         ": " + signature.reason);
    }
    return {};
}

std::string TrustText(const SignerTrust& trust, const Console& console) {
    const std::string product = " for product id '" + console.Foreign(trust.productId) + "'";
    if (trust.isTrusted) {
        return Line("Certificate", console.Styled(Style::Good, "trusted") + product);
    }
    return Line("Certificate",
                console.Styled(Style::Bad, "not trusted") + product + ": " + trust.reason);
}

std::string RevocationText(const RevocationFacts& list, const Console& console) {
    if (list.lengthBytes == 0) {
        return Line("Revocation list", "none");
    }
    if (!list.isList) {
        return Line("Revocation list", CountText(list.lengthBytes, "byte") + ", " + list.remark);
    }
    return Line("Revocation list", CountText(list.lengthBytes, "byte") + ", " +
                                       CountText(list.revoked, "certificate") + " revoked") +
           Line("", "by " + console.Foreign(list.issuer)) +
           Line("", "of " + list.thisUpdate +
                        (list.nextUpdate.empty() ? "" : ", until " + list.nextUpdate));
}

std::string TotalsText(const EntryTotals& totals, const Console& console) {
    const std::string odd = GroupedNumber(totals.oddEntries) + " with a remark (!)";
    return Line("Entries",
                CountText(totals.entries, "file") + ", " + CountText(totals.fileBytes, "byte") +
                    ", " + CountText(totals.chunks, "chunk") +
                    (totals.oddEntries == 0 ? "" : ", " + console.Styled(Style::Warning, odd)));
}

std::string FactsText(const ShownFile& file, const Console& console) {
    std::string text;
    if (file.signature) {
        text += SignatureText(*file.signature, console);
        text += file.signature->trust ? TrustText(*file.signature->trust, console) : "";
    }
    text += file.revocationList ? RevocationText(*file.revocationList, console) : "";
    text += file.totals ? TotalsText(*file.totals, console) : "";
    for (const std::string& note : file.notes) {
        text += console.Styled(Style::Warning, AlignedLeft("Note", kNameWidth)) + note + "\n";
    }
    return text.empty() ? text : "\n" + text;
}

// Widths of the columns before the path.
struct Columns {
    std::size_t size;
    std::size_t chunks;
};

Columns ColumnsOf(const EntryTotals& totals) {
    return {std::max(GroupedNumber(totals.largestFileBytes).size(), std::size_t{5}),
            std::max(GroupedNumber(totals.largestChunkCount).size(), std::size_t{6})};
}

void WriteEntry(const WalkedEntry& entry, const Columns& columns, Console& console) {
    console.Write(AlignedRight(GroupedNumber(entry.record.FileSizeBytes()), columns.size) + "  " +
                  AlignedRight(GroupedNumber(entry.record.DigestCount()), columns.chunks) + "  " +
                  console.Foreign(entry.path.spelt) + "\n");
    const std::string indent(columns.size + columns.chunks + 4, ' ');
    for (const std::string& oddity : OdditiesOf(entry.record, entry.path)) {
        console.Write(indent + console.Styled(Style::Warning, "! " + console.Foreign(oddity)) +
                      "\n");
    }
}

void WriteDigests(EntryWalk& walk, const Columns& columns, Console& console) {
    const std::string indent(columns.size + columns.chunks + 4, ' ');
    Sha256Digest digest;
    while (walk.NextDigest(digest)) {
        console.Write(indent + console.Styled(Style::Faint, HexText(digest)) + "\n");
    }
}

void WriteEntries(const FileToShow& file, const ShowOptions& options, Console& console) {
    const EntryTotals& totals = *file.shown.totals;
    const Columns columns = ColumnsOf(totals);
    const std::uint64_t shown = std::min(options.limit.value_or(totals.entries), totals.entries);
    auto walk = EntryWalk::Begin(*file.catalogue);
    if (!walk || shown == 0) {
        return;
    }
    console.Write("\n" +
                  console.Styled(Style::Faint, AlignedRight("bytes", columns.size) + "  " +
                                                   AlignedRight("chunks", columns.chunks) +
                                                   "  path") +
                  "\n");
    WalkedEntry entry;
    for (std::uint64_t i = 0; i < shown && walk->Next(entry); ++i) {
        WriteEntry(entry, columns, console);
        if (options.hasDigests) {
            WriteDigests(*walk, columns, console);
        }
    }
    if (shown < totals.entries) {
        console.Write("and " + CountText(totals.entries - shown, "more file") + "\n");
    }
}

}  // namespace

void WriteShowText(const FileToShow& file, const ShowOptions& options, Console& console) {
    console.Write(HeadText(file.shown, console) + InvalidText(file.shown, console) +
                  FieldsText(file.shown, console) + FactsText(file.shown, console));
    if (file.catalogue) {
        WriteEntries(file, options, console);
    }
}

}  // namespace sealkeeper
