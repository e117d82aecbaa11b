// The records of a volume by number, and attributes that are spread over several of them.
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "platform/byte_source.h"
#include "platform/file_reference.h"
#include "platform/ntfs/boot_sector.h"
#include "platform/ntfs/mft_record.h"
#include "platform/ntfs/ntfs_stream.h"

namespace quilmark {

// Records that every volume has.
inline constexpr RecordNumber kMftRecord{0}, kRootRecord{5}, kExtendRecord{11};

// An open volume. One thread at a time; `cancelled` may be set by any.
struct MftReader {
  std::unique_ptr<ByteSource> source;
  NtfsGeometry geometry;
  NtfsStream mft;
  uint64_t recordCount = 0;  // no more than the volume's bytes could hold
  // Null, or set by whoever no longer wants the answer: loops over many reads then end early, and what
  // they found so far is of no use.
  const std::atomic<bool>* cancelled = nullptr;

  // Of the volume; no more than its source has, where that tells.
  uint64_t VolumeBytes() const;

  // Whether the $MFT reaches that far; the record may be damaged or not in use.
  bool HasRecord(RecordNumber number) const { return number.value < recordCount; }

  // Where a record begins in the $MFT. REQUIRES HasRecord(number)
  StreamOffset OffsetOfRecord(RecordNumber number) const {
    return StreamOffset(number.value * geometry.recordBytes);
  }

  // Whether somebody no longer wants the answer.
  bool IsCancelled() const { return cancelled != nullptr && *cancelled; }
};

// Finds the $MFT through the boot sector, or through the mirror where its first record is damaged. Empty
// if this is no NTFS volume, neither can be read, or `cancelled` is set meanwhile. `cancelled` stays in
// the reader and must outlive it, unless it is replaced there.
[[nodiscard]] std::optional<MftReader> OpenMft(std::unique_ptr<ByteSource> source,
                                               const std::atomic<bool>* cancelled = nullptr);

// Reads record `number` into `record` (geometry.recordBytes), fix-ups applied. Empty if it cannot be
// read or is damaged.
[[nodiscard]] std::optional<MftRecordHeader> ReadRecord(MftReader& reader, RecordNumber number,
                                                        std::span<std::byte> record);

// One entry of an $ATTRIBUTE_LIST.
struct ListedAttribute {
  uint32_t type = 0;
  StreamCluster lowestVcn;
  FileReference holder;             // of the record that holds it
  std::span<const std::byte> name;  // UTF-16LE
};

// Position in the value of an $ATTRIBUTE_LIST, which may be any bytes and must outlive it.
struct AttributeListCursor {
  std::span<const std::byte> list;
  size_t offset = 0;
};

// The next entry. Empty at the end and at an entry that does not fit, which costs the rest.
[[nodiscard]] std::optional<ListedAttribute> NextListed(AttributeListCursor& cursor);

// The value of the record's $ATTRIBUTE_LIST, resident or not: what of it can be read, at most 256 KiB.
// Empty if the record has none, and if the runs of its list are damaged.
[[nodiscard]] std::vector<std::byte> ReadAttributeList(MftReader& reader,
                                                       std::span<const std::byte> record);

// The attribute of record `number` of this type and name, its parts in other records joined. Empty if
// there is none, a part is missing or damaged, or the reader was cancelled while it looked for parts.
[[nodiscard]] std::optional<NtfsStream> FindStream(MftReader& reader, RecordNumber number, uint32_t type,
                                                   std::u16string_view name);

// The same of the file that `reference` names. Empty also where another file has the record by now: the
// sequence numbers differ.
[[nodiscard]] std::optional<NtfsStream> FindStreamOfFile(MftReader& reader, FileReference reference,
                                                         uint32_t type, std::u16string_view name);

}  // namespace quilmark
