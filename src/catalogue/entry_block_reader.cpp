#include "catalogue/entry_block_reader.h"

#include <cstddef>
#include <deque>
#include <memory>
#include <memory_resource>
#include <string_view>
#include <utility>

#include "catalogue/catalogue_format.h"
#include "catalogue/entry_record_reader.h"
#include "platform/little_endian.h"

namespace sealkeeper {
namespace {

// The one owner of all entries of a catalogue and what they view. An owner and memory of its own
// for each entry would cost half as much memory again for small files.
class SharedEntries {
  public:
    // Reads the next record. Null when it is incomplete.
    const StoredEntry* ReadRecord(EntryRecordReader& records) {
        RecordStart start;
        if (!records.ReadStart(start)) {
            return nullptr;
        }
        const auto digests = MakeRoom<std::uint8_t>(static_cast<std::size_t>(start.DigestsBytes()));
        if (!records.ReadDigests(digests)) {
            return nullptr;
        }
        return &entries_.emplace_back(StoredFields{start.FileSizeBytes(), start.NamePosition(),
                                                   KeepPath(start.PathField()), digests});
    }

  private:
    template <typename Element>
    std::span<Element> MakeRoom(std::size_t count) {
        Element* const start = std::pmr::polymorphic_allocator<Element>(&pieces_).allocate(count);
        std::uninitialized_default_construct_n(start, count);
        return {start, count};
    }

    // The units of a path's field up to the first zero.
    std::u16string_view KeepPath(std::span<const std::uint8_t> field) {
        const auto unitAt = [field](std::size_t index) {
            return static_cast<char16_t>(
                LoadLittleEndian<std::uint16_t>(field.subspan(index * sizeof(char16_t))));
        };
        std::size_t length = 0;
        while (length < entry_record::kPathUnits && unitAt(length) != 0) {
            ++length;
        }
        const auto path = MakeRoom<char16_t>(length);
        for (std::size_t index = 0; index < length; ++index) {
            path[index] = unitAt(index);
        }
        return {path.data(), path.size()};
    }

    // Allocates from large pieces and frees them all at once on destruction.
    std::pmr::monotonic_buffer_resource pieces_;
    // A deque, so that references to its elements stay valid.
    std::pmr::deque<StoredEntry> entries_{&pieces_};
};

ResultCode ReadRecords(EntryRecordReader& records, std::uint32_t entryCount, EntryList& entries) {
    const auto shared = std::make_shared<SharedEntries>();
    EntryList read;
    // The block is known to be long enough for so many records.
    read.reserve(entryCount);
    for (std::uint32_t i = 0; i < entryCount; ++i) {
        const StoredEntry* const entry = shared->ReadRecord(records);
        if (entry == nullptr) {
            return ResultCode::FileInvalid;
        }
        read.emplace_back(shared, entry);
    }
    entries = std::move(read);
    return ResultCode::Ok;
}

}  // namespace

ResultCode ReadEntryBlock(std::span<const std::uint8_t> compressed, std::uint32_t entryCount,
                          EntryList& entries) {
    entries.clear();
    auto records = EntryRecordReader::Open(compressed, entryCount);
    return records ? ReadRecords(*records, entryCount, entries) : ResultCode::FileInvalid;
}

}  // namespace sealkeeper
