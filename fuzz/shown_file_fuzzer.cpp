// Feeds any bytes as a file for `show`; the first byte says what kind of file to make of them.
// `show` must call valid what `list` accepts, show the entries that the tool reads, and say where
// an error is.
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <nlohmann/json.hpp>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <variant>

#include "app/command_line_options.h"
#include "app/console_log.h"
#include "app/list_action.h"
#include "catalogue/hash_catalogue.h"
#include "catalogue/lzw/lzw_decompressor.h"
#include "entry_block_file.h"
#include "fuzzer.h"
#include "inspect/report/console.h"
#include "inspect/show/catalogue_difference.h"
#include "inspect/show/entry_walk.h"
#include "inspect/show/read_file.h"
#include "inspect/show/show_json.h"
#include "inspect/show/show_text.h"
#include "platform/text_encoding.h"
#include "runtime/scramble.h"
#include "scratch_directory.h"

namespace {

using namespace sealkeeper;
using fuzz::Bytes;
using fuzz::ByteView;
using fuzz::Require;

constexpr const char* kProductId = "FuzzedGame";

// The entries as the reader of the tool reads them from the whole catalogue.
EntryList EntriesOf(Bytes file) {
    HashCatalogue catalogue("");
    EntryList entries;
    Require(catalogue.ReadCatalogue(std::move(file), entries) == ResultCode::Ok);
    return entries;
}

bool AreSame(std::span<const std::uint8_t> left, std::span<const std::uint8_t> right) {
    return std::equal(left.begin(), left.end(), right.begin(), right.end());
}

void CheckEntry(EntryWalk& walk, const WalkedEntry& walked, const StoredEntry& entry) {
    Require(walked.record.FileSizeBytes() == entry.FileSizeBytes());
    Require(walked.record.NamePosition() == entry.NamePosition());
    Require(walked.record.DigestCount() == entry.DigestCount());
    Require(walked.path.hasLoneSurrogate || walked.path.seen == WideToUtf8(entry.Path()));
    for (std::uint32_t i = 0; i < entry.DigestCount(); ++i) {
        Sha256Digest digest;
        Require(walk.NextDigest(digest) && AreSame(digest, entry.Digest(i)));
    }
    Sha256Digest none;
    Require(!walk.NextDigest(none));
}

void CheckEntries(const FileToShow& read, const Bytes& file) {
    const EntryList entries = EntriesOf(file);
    std::uint64_t chunks = 0;
    auto walk = EntryWalk::Begin(*read.catalogue);
    Require(walk.has_value());
    WalkedEntry walked;
    for (const auto& entry : entries) {
        Require(!walk->HasEnded() && walk->Next(walked));
        CheckEntry(*walk, walked, *entry);
        chunks += entry->DigestCount();
    }
    Require(!walk->Next(walked) && walk->HasEnded());
    Require(read.shown.totals->entries == entries.size() && read.shown.totals->chunks == chunks);
}

// A catalogue must not differ from itself.
void CheckComparison(const FileToShow& read) {
    const auto entries = [&read] {
        InvalidReason reason;
        auto compared = EntriesToCompare(*read.catalogue, reason);
        Require(compared.has_value());
        return std::move(*compared);
    };
    const CatalogueDifference difference =
        DifferenceOf({*read.catalogue, entries()}, {*read.catalogue, entries()});
    Require(!difference.HasEntries() && difference.others.empty());
    Require(difference.unchanged == read.shown.totals->entries);
}

// The file with its parsed header, which is valid if an entry block was read.
CatalogueFile CatalogueIn(const Bytes& file) {
    CatalogueFile catalogue{file, {}};
    Require(ReadCatalogueHeader(file, file.size(), catalogue.header) == ResultCode::Ok);
    return catalogue;
}

void CheckSentence(const std::string& text) {
    Require(!text.empty() && std::none_of(text.begin(), text.end(),
                                          [](unsigned char c) { return c < 0x20 || c == 0x7F; }));
}

void CheckFinding(const InvalidFinding& finding, const Bytes& file) {
    CheckSentence(finding.field);
    CheckSentence(finding.message);
    for (const std::string& cause : finding.likelyCauses) {
        CheckSentence(cause);
    }
    if (!finding.isInEntryBlock) {
        // If bytes are missing, the offset is past the last one.
        Require(finding.offset <= file.size() && !finding.entryIndex);
        return;
    }
    const CatalogueFile catalogue = CatalogueIn(file);
    const auto block = LzwDecompressor::Open(CompressedBlockOf(catalogue));
    Require(block.has_value() && finding.offset <= block->BytesLeft());
    Require(!finding.entryIndex || *finding.entryIndex < catalogue.header.entryCount);
}

void CheckFields(const ShownFile& shown) {
    for (const ShownField& field : shown.fields) {
        Require(field.offset <= shown.sizeBytes &&
                field.sizeBytes <= shown.sizeBytes - field.offset);
        Require(field.sizeBytes == 2 || field.sizeBytes == 4 ||
                std::holds_alternative<std::string>(field.value));
    }
}

// Redirects standard output, where reports go, to a file that `Take` empties.
class Report {
  public:
    explicit Report(const std::string& path) : path_(path) {
        Require(std::freopen(path.c_str(), "w", stdout) != nullptr);
    }

    // What was written since the last call.
    [[nodiscard]] std::string Take() const {
        Require(std::fflush(stdout) == 0);
        const Bytes bytes = fuzz::ContentOf(path_);
        std::rewind(stdout);
        Require(ftruncate(fileno(stdout), 0) == 0);
        return {bytes.begin(), bytes.end()};
    }

  private:
    std::string path_;
};

void CheckReports(const FileToShow& read, const Report& report, ShowOptions options) {
    Console console;
    WriteShowText(read, options, console);
    const std::string text = report.Take();
    Require(text.ends_with('\n'));
    options.isJson = true;
    WriteShowJson(read, options, console);
    const auto document = nlohmann::json::parse(report.Take(), nullptr, false);
    Require(document.is_object());
    Require(document.at("isValid").get<bool>() != read.shown.invalid.has_value());
    if (read.catalogue) {
        Require(document.at("entries").size() ==
                std::min(*options.limit, read.shown.totals->entries));
    }
    Require(console.Finish());
}

// The certificate beside the file is the trusted one of the game.
void CheckSignature(const ShownFile& shown) {
    const bool isGood = shown.signature && shown.signature->state == SignatureState::Good;
    if (shown.kind != ShownKind::Catalogue) {
        // No runtime.conf in the corpus is signed.
        Require(!isGood);
        return;
    }
    HashCatalogue catalogue(kProductId);
    CatalogueContents contents;
    const ResultCode code =
        catalogue.ReadAndVerifyCatalogue(Utf8ToWide(shown.path), {}, {}, contents);
    Require((code == ResultCode::Ok) == (isGood && !shown.invalid));
    Require(!shown.signature || shown.signature->trust->isTrusted);
}

ResultCode List(const std::string& path) {
    static CommandLineOptions options;
    options.listPath = path;
    return RunListAction(options);
}

Bytes FileOf(ByteView input) {
    constexpr std::uint8_t kRuntimeConfiguration = 1;
    constexpr std::uint8_t kEntryBlock = 2;
    const std::uint8_t form = fuzz::TakeByte(input);
    if (form == kEntryBlock) {
        return fuzz::FileOfEntryBlock(input);
    }
    Bytes file(input.begin(), input.end());
    if (form == kRuntimeConfiguration) {
        Scramble(file);
    }
    return file;
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    g_logThreshold = LogLevel{0};
    static const fuzz::ScratchDirectory directory;
    static const Report report(directory.Path() + "report");
    // A certificate beside the file, as in a game.
    static const bool hasCertificate = [] {
        directory.Write("base.cer", fuzz::ContentOf(std::string(SEALKEEPER_FUZZ_CREDENTIALS_DIR) +
                                                    "/game.cer"));
        return true;
    }();
    Require(hasCertificate);
    const Bytes file = FileOf({data, size});
    directory.Write("base.bin", file);

    ShowOptions options;
    options.path = directory.Path() + "base.bin";
    options.productId = kProductId;
    options.hasDigests = true;
    options.limit = 20;
    std::string failure;
    const auto read = ReadFileToShow(options.path, options.productId, failure);
    Require(read.has_value() && failure.empty());
    const ShownFile& shown = read->shown;
    Require(shown.sizeBytes == file.size());
    Require(shown.invalid.has_value() == (List(options.path) != ResultCode::Ok));
    Require(read->catalogue.has_value() == (!shown.invalid && shown.kind == ShownKind::Catalogue));
    CheckSignature(shown);
    CheckFields(shown);
    if (shown.invalid) {
        CheckFinding(*shown.invalid, file);
    }
    if (read->catalogue) {
        CheckEntries(*read, file);
        CheckComparison(*read);
    }
    CheckReports(*read, report, options);
    return 0;
}
