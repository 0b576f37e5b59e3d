#include "inspect/show/likely_causes.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <string_view>

#include "catalogue/catalogue_format.h"
#include "catalogue/catalogue_reader.h"
#include "config/config_names.h"
#include "inspect/report/number_text.h"
#include "inspect/x509/file_kind.h"
#include "platform/little_endian.h"
#include "runtime/runtime_configuration_format.h"
#include "runtime/scramble.h"

namespace sealkeeper {
namespace {

using Bytes = std::vector<std::uint8_t>;

struct KnownStart {
    std::string_view start;
    const char* what;
};

// Magic numbers of other formats. Two strings are split where a letter would be read as a hex
// digit.
constexpr std::array<KnownStart, 13> kKnownStarts = {{
    {"version https://git-lfs", "the pointer that Git LFS keeps in place of a file"},
    {"<!DOCTYPE", "a web page, perhaps one that tells why a download failed"},
    {"<!doctype", "a web page, perhaps one that tells why a download failed"},
    {"<html", "a web page, perhaps one that tells why a download failed"},
    {"<?xml", "XML"},
    {"\x1F\x8B", "compressed by gzip"},
    {"\x1F\x9D", "compressed by compress, or the entry block of a catalogue without its header"},
    {"PK\x03\x04", "a ZIP archive"},
    {"\x28\xB5\x2F\xFD", "compressed by zstd"},
    {"\xFD"
     "7zXZ",
     "compressed by xz"},
    {"\x7F"
     "ELF",
     "a program"},
    {"MZ", "a program"},
    {"%PDF", "a PDF document"},
}};

std::string_view TextOf(std::span<const std::uint8_t> bytes) {
    // The bytes of the file as characters.
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

std::string_view WithoutLeadingBlanks(std::string_view text) {
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    if (text.starts_with(kByteOrderMark)) {
        text.remove_prefix(kByteOrderMark.size());
    }
    return text.substr(std::min(text.find_first_not_of(" \t\r\n"), text.size()));
}

// Whether `kind` is certainly one of credentials.
bool IsCredential(FileKind kind) {
    return kind != FileKind::Unknown && kind != FileKind::Empty && kind != FileKind::Utf16Text &&
           kind != FileKind::CutOffDer;
}

std::optional<std::string> CauseByCredential(std::span<const std::uint8_t> bytes) {
    const FileKind kind = FileKindOf(bytes);
    if (kind == FileKind::DerCertificate) {
        return "this is a certificate; the catalogue that it belongs to has the extension .bin";
    }
    return IsCredential(kind) ? std::optional(std::string("this is ") + FileKindText(kind))
                              : std::nullopt;
}

std::optional<std::string> CauseByKind(std::span<const std::uint8_t> bytes) {
    const std::string_view text = TextOf(bytes);
    const std::string_view unblanked = WithoutLeadingBlanks(text);
    for (const KnownStart& known : kKnownStarts) {
        if (text.starts_with(known.start) || unblanked.starts_with(known.start)) {
            return std::string("this is ") + known.what;
        }
    }
    if (text.find(kInfoSection) != std::string_view::npos &&
        text.find(kSearchSection) != std::string_view::npos) {
        return "this is a configuration file";
    }
    return CauseByCredential(bytes);
}

bool IsPlainRuntimeConfiguration(std::span<const std::uint8_t> bytes) {
    const auto load = [bytes](std::size_t offset) {
        return LoadLittleEndian<std::uint32_t>(bytes.subspan(offset));
    };
    return bytes.size() == runtime_file::kSizeBytes && signed_file::HasMagic(bytes) &&
           load(runtime_file::kSignatureLengthOffset) <= signed_file::kSignatureAreaBytes &&
           load(runtime_file::kVersionOffset) == kRuntimeConfigurationVersion;
}

bool IsSoundCatalogueStart(std::span<const std::uint8_t> bytes) {
    CatalogueHeader header;
    return ReadCatalogueHeader(bytes, bytes.size(), header) == ResultCode::Ok;
}

bool IsRuntimeConfiguration(Bytes bytes) {
    Unscramble(bytes);
    return IsPlainRuntimeConfiguration(bytes);
}

std::optional<std::string> CauseByScrambling(const Bytes& bytes) {
    if (IsPlainRuntimeConfiguration(bytes)) {
        return "this is a runtime.conf that is not scrambled, as it has to be stored";
    }
    if (bytes.size() != runtime_file::kSizeBytes) {
        return std::nullopt;
    }
    Bytes unscrambled = bytes;
    Unscramble(unscrambled);
    if (IsRuntimeConfiguration(unscrambled)) {
        return "this is a runtime.conf that was scrambled twice";
    }
    return std::nullopt;
}

// Unscrambling runs from the end of the file. A changed byte therefore shifts all bytes before it
// by one constant, with alternating sign, and the sum of two neighbours stays the same.
bool IsMagicBesideChange(std::span<const std::uint8_t> unscrambled) {
    const auto sum = [&unscrambled](std::size_t index) {
        return static_cast<std::uint8_t>(unscrambled[index] + unscrambled[index + 1]);
    };
    const auto& magic = signed_file::kMagic;
    for (std::size_t i = 0; i + 1 < magic.size(); ++i) {
        if (sum(i) != static_cast<std::uint8_t>(magic[i] + magic[i + 1])) {
            return false;
        }
    }
    return true;
}

std::optional<std::string> CauseByDamagedSettings(const FileStart& file) {
    if (file.bytes.size() < signed_file::kMagic.size() || signed_file::HasMagic(file.bytes)) {
        return std::nullopt;
    }
    Bytes unscrambled = file.bytes;
    Unscramble(unscrambled);
    const std::size_t size = file.bytes.size();
    const bool isWhole = size == runtime_file::kSizeBytes && signed_file::HasMagic(unscrambled);
    if (isWhole || !IsMagicBesideChange(unscrambled)) {
        return std::nullopt;
    }
    const std::string start = "this is a runtime.conf ";
    if (size < runtime_file::kSizeBytes) {
        return start + "that was cut off: " + CountText(runtime_file::kSizeBytes - size, "byte") +
               " of its end got lost";
    }
    return size > runtime_file::kSizeBytes
               ? start + "with " + CountText(size - runtime_file::kSizeBytes, "byte") +
                     " too many, or it was changed"
               : start + "that was changed";
}

// Removes each carriage return that precedes a line feed.
Bytes WithoutCarriageReturns(const Bytes& bytes) {
    constexpr std::uint8_t kCarriageReturn = 0x0D;
    constexpr std::uint8_t kLineFeed = 0x0A;
    Bytes without;
    without.reserve(bytes.size());
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const bool isInserted =
            bytes[i] == kCarriageReturn && i + 1 < bytes.size() && bytes[i + 1] == kLineFeed;
        if (!isInserted) {
            without.push_back(bytes[i]);
        }
    }
    return without;
}

std::optional<std::string> CauseByTextMode(const FileStart& file) {
    const std::size_t size = file.bytes.size();
    const Bytes without = WithoutCarriageReturns(file.bytes);
    if (without.size() < size && size == file.fileSizeBytes &&
        (IsSoundCatalogueStart(without) || IsRuntimeConfiguration(without))) {
        return "it was transferred as text: with its " +
               CountText(size - without.size(), "byte pair") +
               " 0D 0A taken back to 0A, it would be sound";
    }
    // Two U+FFFD, which replace bytes that are not UTF-8. One alone may be chance.
    constexpr std::string_view kReplacement = "\xEF\xBF\xBD\xEF\xBF\xBD";
    if (TextOf(file.bytes).find(kReplacement) != std::string_view::npos) {
        return "it was read and written as UTF-8 text, which put EF BF BD in place of other bytes";
    }
    return std::nullopt;
}

// Whether the file would be a catalogue with a correct magic and format version.
std::optional<std::string> CauseByDamagedStart(const FileStart& file) {
    namespace format = catalogue_header;
    if (file.bytes.size() < format::kSizeBytes) {
        return std::nullopt;
    }
    Bytes mended(file.bytes.begin(), file.bytes.begin() + format::kSizeBytes);
    std::copy(signed_file::kMagic.begin(), signed_file::kMagic.end(), mended.begin());
    StoreLittleEndian(format::kFormatVersion,
                      std::span(mended).subspan(format::kFormatVersionOffset));
    CatalogueHeader header;
    if (std::equal(mended.begin(), mended.end(), file.bytes.begin()) ||
        ReadCatalogueHeader(mended, file.fileSizeBytes, header) != ResultCode::Ok) {
        return std::nullopt;
    }
    return "the lengths in the header add up to the size of the file, so it is probably a catalogue with a damaged beginning";
}

}  // namespace

std::vector<std::string> LikelyCausesOf(const FileStart& file) {
    if (file.fileSizeBytes == 0) {
        return {"the file is empty: a copy that was interrupted, or a full disk"};
    }
    if (file.bytes.empty()) {
        return {};
    }
    if (std::all_of(file.bytes.begin(), file.bytes.end(), [](std::uint8_t b) { return b == 0; })) {
        return {"it contains only zeros, as after a power failure that lost its content"};
    }
    std::vector<std::string> causes;
    for (const auto& cause : {CauseByKind(file.bytes), CauseByScrambling(file.bytes),
                              CauseByTextMode(file), CauseByDamagedStart(file)}) {
        if (cause) {
            causes.push_back(*cause);
        }
    }
    // Only without other causes: a transfer as text changes the settings, too.
    if (const auto cause = CauseByDamagedSettings(file); cause && causes.empty()) {
        causes.push_back(*cause);
    }
    return causes;
}

}  // namespace sealkeeper
