#include "inspect/show/invalid_finding.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <span>
#include <utility>

#include "catalogue/catalogue_format.h"
#include "catalogue/lzw/lzw_format.h"
#include "inspect/report/hex_text.h"
#include "inspect/report/number_text.h"
#include "inspect/report/unread_reason.h"
#include "inspect/show/catalogue_fields.h"
#include "inspect/show/likely_causes.h"
#include "platform/little_endian.h"
#include "runtime/runtime_configuration_format.h"

namespace sealkeeper {
namespace {

namespace header = catalogue_header;

std::uint64_t Load(const FileStart& file, std::size_t offset) {
    return LoadLittleEndian<std::uint32_t>(std::span(file.bytes).subspan(offset));
}

// The first `count` bytes of the little-endian `number`.
std::string StoredHex(std::uint64_t number, std::size_t count) {
    std::array<std::uint8_t, sizeof(number)> bytes{};
    StoreLittleEndian(number, bytes);
    return SeparatedHexText(std::span(bytes).first(count));
}

// "is 5, where 4 is the only one known".
std::string OnlyOneKnown(const InvalidReason& reason) {
    return "is " + GroupedNumber(reason.found) + ", where " + GroupedNumber(reason.expected) +
           " is the only one known";
}

InvalidFinding InFile(const char* field, std::uint64_t offset, std::string message) {
    return {field, offset, false, std::nullopt, std::move(message), {}};
}

InvalidFinding InEntryBlock(const char* field, const InvalidReason& reason, std::string message) {
    return {field, reason.offset, true, reason.index, std::move(message), {}};
}

InvalidFinding ShortFile(const InvalidReason& reason, const FileStart& file) {
    const std::string length = CountText(reason.found, "byte");
    const std::string runtimeLength = GroupedNumber(runtime_file::kSizeBytes);
    if (reason.expected == runtime_file::kSizeBytes) {
        return InFile("file length", reason.offset,
                      "does not begin as a catalogue does and, with " + length +
                          ", is too short for a runtime.conf, which has " + runtimeLength);
    }
    std::string message = "has " + length + ", where a catalogue has " +
                          GroupedNumber(header::kSizeBytes) + " at least and a runtime.conf " +
                          runtimeLength;
    if (signed_file::HasMagic(file.bytes)) {
        message += "; it ends in the header's ";
        message += CatalogueFieldAt(reason.found);
    }
    return InFile("file length", reason.offset, std::move(message));
}

InvalidFinding WrongMagic(const InvalidReason& reason, const FileStart& file) {
    const std::size_t size = signed_file::kMagic.size();
    return InFile("magic", reason.offset,
                  "is " + SeparatedHexText(std::span(file.bytes).first(size)) + ", or " +
                      StoredHex(reason.found, size) +
                      " once the file is unscrambled as a runtime.conf, where a file of either "
                      "kind begins with " +
                      SeparatedHexText(signed_file::kMagic));
}

// Whether a compressed block can begin at `offset`.
bool IsBlockAt(const FileStart& file, std::uint64_t offset) {
    return offset <= file.bytes.size() && lzw::HasMagic(std::span(file.bytes).subspan(offset));
}

std::string LikelyCauseOf(std::uint64_t toldBytes, std::uint64_t bytes) {
    return toldBytes > bytes
               ? "unless the field was changed, the file was cut off: " +
                     CountText(toldBytes - bytes, "byte") + " of its end got lost"
               : "unless the field was changed, " + CountText(bytes - toldBytes, "byte") +
                     " were added to the file's end";
}

// The sum does not tell which of the lengths is wrong, but the position of the block does.
InvalidFinding WrongLengths(const FileStart& file) {
    const std::uint64_t afterHeader = file.fileSizeBytes - header::kSizeBytes;
    const std::uint64_t crl = Load(file, header::kCrlLengthOffset);
    const std::uint64_t compressed = Load(file, header::kCompressedLengthOffset);
    if (compressed <= afterHeader && IsBlockAt(file, file.fileSizeBytes - compressed)) {
        return InFile("crl_length", header::kCrlLengthOffset,
                      "is " + GroupedNumber(crl) + ", where it should be " +
                          GroupedNumber(afterHeader - compressed) +
                          ": an entry block of compressed_length stands at the end of the file");
    }
    InvalidFinding finding =
        crl > afterHeader ? InFile("crl_length", header::kCrlLengthOffset,
                                   "is " + GroupedNumber(crl) + ", where the file has " +
                                       CountText(afterHeader, "byte") + " for it")
                          : InFile("compressed_length", header::kCompressedLengthOffset,
                                   "is " + GroupedNumber(compressed) + ", where the file has " +
                                       CountText(afterHeader - crl, "byte") + " for it");
    finding.likelyCauses.push_back(LikelyCauseOf(crl + compressed, afterHeader));
    return finding;
}

InvalidFinding WrongBlockMagic(const InvalidReason& reason, const FileStart& file,
                               std::uint64_t offset) {
    const std::uint64_t length = Load(file, header::kCompressedLengthOffset);
    const auto shown = static_cast<std::size_t>(std::min<std::uint64_t>(length, lzw::kMagicBytes));
    return InFile("entry block magic", offset,
                  (shown == 0 ? "is missing" : "is " + StoredHex(reason.found, shown)) +
                      ", where a block begins with " +
                      StoredHex(reason.expected, lzw::kMagicBytes) +
                      "; so the block counts as empty, and entry_count is " +
                      GroupedNumber(Load(file, header::kEntryCountOffset)));
}

std::string WrongCode(const InvalidReason& reason) {
    const std::string more = reason.expected < lzw::kFirstFreeCode
                                 ? std::string()
                                 : " and " + GroupedNumber(lzw::kFirstFreeCode) + " to " +
                                       GroupedNumber(reason.expected);
    return "number " + GroupedNumber(reason.index) + " is " + GroupedNumber(reason.found) +
           ", where only 0 to 255" + more + " are assigned";
}

// "of entry 3 of 4".
std::string OfEntry(const InvalidReason& reason, const FileStart& file) {
    return "of entry " + GroupedNumber(reason.index + 1) + " of " +
           GroupedNumber(Load(file, header::kEntryCountOffset));
}

InvalidFinding WordsFor(const InvalidReason& reason, const FileStart& file, std::uint64_t offset) {
    switch (reason.field) {
        case InvalidField::FileLength:
            return ShortFile(reason, file);
        case InvalidField::Magic:
            return WrongMagic(reason, file);
        case InvalidField::FormatVersion:
            return InFile("format version", offset, OnlyOneKnown(reason));
        case InvalidField::BlockLengths:
            return WrongLengths(file);
        case InvalidField::BlockMagic:
            return WrongBlockMagic(reason, file, offset);
        case InvalidField::CodeWidth:
            return InFile("code width", offset,
                          "is missing or 0, in the low five bits of the entry block's third byte");
        case InvalidField::Code:
            return InFile("code", offset, WrongCode(reason));
        case InvalidField::UncompressedLength:
            return InFile("code", offset,
                          "number " + GroupedNumber(reason.index) + " takes the entry block over " +
                              GroupedNumber(reason.expected) +
                              " bytes, the most that raw_length can tell");
        case InvalidField::EntryCount:
            return InFile("entry_count", offset,
                          "is " + GroupedNumber(reason.found) +
                              ", where the entry block has room for " +
                              CountText(reason.expected, "record") + " at most");
        case InvalidField::Record:
            return InEntryBlock("record", reason,
                                OfEntry(reason, file) + " has " + CountText(reason.found, "byte") +
                                    ", where a record has " + GroupedNumber(reason.expected) +
                                    " at least; or entry_count is too large");
        case InvalidField::DigestCount:
            return InEntryBlock("digest count", reason,
                                OfEntry(reason, file) + " is " + GroupedNumber(reason.found) +
                                    ", where the entry block has room for " +
                                    GroupedNumber(reason.expected));
        case InvalidField::SettingsVersion:
            return InFile("version", offset, OnlyOneKnown(reason));
    }
    return {};
}

}  // namespace

InvalidFinding FindingOf(const InvalidReason& reason, const FileStart& file) {
    const std::uint64_t offset =
        reason.place == InvalidPlace::CompressedBlock
            ? file.fileSizeBytes - Load(file, header::kCompressedLengthOffset) + reason.offset
            : reason.offset;
    InvalidFinding finding = WordsFor(reason, file, offset);
    // A cause found in the whole file explains more than a single field does.
    if (auto causes = LikelyCausesOf(file); !causes.empty()) {
        finding.likelyCauses = std::move(causes);
    }
    return finding;
}

std::optional<InvalidFinding> FindingOfFile(const InvalidReason& reason, const std::string& path,
                                            std::uint64_t sizeBytes, std::string& failure) {
    errno = 0;
    const auto start = ReadFileStart(path, kMaxBytesForCauses);
    if (!start) {
        failure = CannotBeRead(path, errno);
        return std::nullopt;
    }
    if (start->fileSizeBytes != sizeBytes) {
        failure = "changed while it was read";
        return std::nullopt;
    }
    return FindingOf(reason, *start);
}

}  // namespace sealkeeper
