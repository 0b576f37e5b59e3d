#include "inspect/show/read_file.h"

#include <cerrno>
#include <cstdint>
#include <utility>
#include <vector>

#include "catalogue/catalogue_format.h"
#include "inspect/report/unread_reason.h"
#include "inspect/show/catalogue_facts.h"
#include "inspect/show/catalogue_fields.h"
#include "inspect/show/invalid_finding.h"
#include "inspect/show/runtime_facts.h"
#include "platform/file_io.h"
#include "runtime/runtime_configuration_reader.h"

namespace sealkeeper {
namespace {

// An open file that begins with the magic, and the bytes read so far.
struct OpenedCatalogue {
    SizedFile opened;
    std::vector<std::uint8_t> start;
};

// False if the file cannot be read. If it is not valid, `invalid` says why.
bool ReadCatalogue(OpenedCatalogue from, const std::optional<std::string>& productId,
                   FileToShow& read, std::optional<InvalidReason>& invalid) {
    read.shown.kind = ShownKind::Catalogue;
    read.shown.fields = CatalogueFieldsOf(from.start);
    CatalogueFile file{std::move(from.start), {}};
    InvalidReason reason;
    const ResultCode code = ReadCatalogueFile(std::move(from.opened), file, &reason);
    if (code == ResultCode::FileInvalid) {
        invalid = reason;
        return true;
    }
    if (code != ResultCode::Ok) {
        return false;
    }
    invalid = AddCatalogueFacts(file, productId, read.shown);
    if (!invalid) {
        read.catalogue = std::move(file);
    }
    return true;
}

bool ReadByKind(SizedFile opened, const std::optional<std::string>& productId, FileToShow& read,
                std::optional<InvalidReason>& invalid) {
    std::vector<std::uint8_t> bytes;
    if (!ReadOn(opened, catalogue_header::kSizeBytes, bytes)) {
        return false;
    }
    if (signed_file::HasMagic(bytes)) {
        return ReadCatalogue({std::move(opened), std::move(bytes)}, productId, read, invalid);
    }
    if (bytes.size() < catalogue_header::kSizeBytes) {
        invalid = {InvalidField::FileLength, InvalidPlace::File, bytes.size(), bytes.size(),
                   catalogue_header::kSizeBytes};
        return true;
    }
    if (!ReadOn(opened, kMaxRuntimeFileBytes, bytes)) {
        return false;
    }
    invalid = AddRuntimeFacts(std::move(bytes), productId, read.shown);
    return true;
}

}  // namespace

std::optional<FileToShow> ReadFileToShow(const std::string& path,
                                         const std::optional<std::string>& productId,
                                         std::string& failure) {
    errno = 0;
    auto opened = OpenSizedFile(path);
    FileToShow read;
    read.shown.path = path;
    read.shown.sizeBytes = opened ? opened->sizeBytes : 0;
    std::optional<InvalidReason> invalid;
    if (!opened || !ReadByKind(std::move(*opened), productId, read, invalid)) {
        failure = CannotBeRead(path, errno);
        return std::nullopt;
    }
    if (!invalid) {
        return read;
    }
    read.shown.invalid = FindingOfFile(*invalid, path, read.shown.sizeBytes, failure);
    return read.shown.invalid ? std::optional(std::move(read)) : std::nullopt;
}

}  // namespace sealkeeper
