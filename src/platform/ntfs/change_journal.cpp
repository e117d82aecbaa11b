#include "platform/ntfs/change_journal.h"

#include <algorithm>

#include "platform/bytes.h"
#include "platform/ntfs/folder_index.h"
#include "platform/usn_record.h"

namespace quilmark {

namespace {

constexpr uint32_t kReasonClose = 0x8000'0000;  // USN_REASON_CLOSE of winioctl.h
constexpr uint64_t kPageBytes = 4'096;          // no record crosses a page (USN_PAGE_SIZE of winioctl.h)
constexpr size_t kReadBytes = 64 * 1024;        // chosen: the block that callers ask for

// $Max: byte offsets, by the Linux-NTFS project's documentation of $UsnJrnl.
constexpr size_t kMaximumSize = 0, kAllocationDelta = 8, kJournalId = 16, kLowestValid = 24,
                 kMaxBytes = 32;

// Of the page that holds `offset`.
StreamOffset StartOfPage(StreamOffset offset) {
  return StreamOffset(offset.value / kPageBytes * kPageBytes);
}

bool IsWanted(const UsnRecord& record, const JournalRange& range) {
  if (range.onlyOnClose && (record.reason & kReasonClose) == 0) return false;
  return (record.reason & range.reasonMask) != 0;
}

// Takes records out of `page`, which begins at byte `start` of the journal and ends at a page's end, as
// long as they have room. False, with `position` at the record that has none, if one does not.
bool TakeRecords(std::span<const std::byte> page, StreamOffset start, const JournalRange& range,
                 std::span<std::byte> output, size_t& used, StreamOffset& position) {
  StoredUsnCursor cursor{.page = page};
  while (const auto stored = NextStoredUsnRecord(cursor)) {
    if (!IsWanted(stored->record, range)) continue;
    const size_t needed = UsnRecordLength(stored->record.name.size() / sizeof(char16_t));
    if (needed > output.size() - used) {
      position = start + stored->offset;
      return false;
    }
    PutUsnRecord(output.subspan(used), stored->record, stored->timestamp);
    used += needed;
  }
  position = start + page.size();
  return true;
}

}  // namespace

std::optional<ChangeJournal> OpenChangeJournal(MftReader& reader) {
  const auto reference = FindInFolder(reader, kExtendRecord, u"$UsnJrnl");
  if (!reference) return std::nullopt;
  const auto max = FindStreamOfFile(reader, *reference, kData, u"$Max");
  auto records = FindStreamOfFile(reader, *reference, kData, u"$J");
  if (!max || !records || max->resident.size() < kMaxBytes) return std::nullopt;
  records->size = records->initialized;  // what has yet to be written must not be taken for read
  ChangeJournal journal;
  journal.id = LoadLe<uint64_t>(max->resident, kJournalId);
  journal.maximumBytes = LoadLe<uint64_t>(max->resident, kMaximumSize);
  journal.allocationDelta = LoadLe<uint64_t>(max->resident, kAllocationDelta);
  journal.lowestValidUsn = LoadLe<int64_t>(max->resident, kLowestValid);
  journal.nextUsn = static_cast<int64_t>(std::min<uint64_t>(records->size, INT64_MAX));
  // The front of the journal is given back to the volume as it grows.
  const auto lowest =
      static_cast<uint64_t>(std::clamp<int64_t>(journal.lowestValidUsn, 0, journal.nextUsn));
  journal.firstUsn = static_cast<int64_t>(NextStored(*records, StreamOffset(lowest)).value);
  journal.records = std::move(*records);
  return journal;
}

VolumeDevice::Reply ReadChangeJournal(ByteSource& source, const ChangeJournal& journal,
                                      const JournalRange& range, std::span<std::byte> output,
                                      const std::atomic<bool>& cancelled) {
  if (output.size() < kUsnPositionBytes) return {.error = kErrorMoreData};
  const int64_t start = range.startUsn == 0 ? journal.firstUsn : range.startUsn;
  if (start < journal.firstUsn) return {.error = kErrorJournalEntryDeleted};
  if (start > journal.nextUsn) return {.error = kErrorInvalidParameter};

  std::vector<std::byte> buffer(kReadBytes);
  const StreamOffset end(static_cast<uint64_t>(journal.nextUsn));
  size_t used = kUsnPositionBytes;
  StreamOffset position(static_cast<uint64_t>(start));
  bool hasRoom = true;
  while (hasRoom && (position = NextStored(journal.records, position)) < end) {
    if (cancelled) return {.error = kErrorOperationAborted};
    // Up to the end of a page: records are looked for page by page.
    const StreamOffset stretchEnd = std::min(end, StartOfPage(position + kReadBytes));
    const auto stretch = std::span(buffer).first(BytesBetween(position, stretchEnd));
    const size_t got = ReadStream(source, journal.records, position, stretch);
    const StreamOffset stretchStart = position;
    // What cannot be read is asked for again, and not taken for empty.
    const StreamOffset readEnd = got == stretch.size() ? stretchEnd : StartOfPage(position + got);
    if (readEnd <= position) {
      if (used == kUsnPositionBytes) return {.error = kErrorReadFault};
      break;
    }
    while (position < readEnd && hasRoom) {
      const StreamOffset pageEnd = std::min(readEnd, StartOfPage(position + kPageBytes));
      const auto page =
          stretch.subspan(BytesBetween(stretchStart, position), BytesBetween(position, pageEnd));
      hasRoom = TakeRecords(page, position, range, output, used, position);
    }
  }
  if (!hasRoom && used == kUsnPositionBytes) return {.error = kErrorMoreData};
  StoreLe(output, 0, position.value);
  return {.bytes = used};
}

}  // namespace quilmark
