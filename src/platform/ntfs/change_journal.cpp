#include "platform/ntfs/change_journal.h"

#include <algorithm>

#include "platform/bytes.h"
#include "platform/ntfs/folder_index.h"
#include "platform/usn_record.h"

namespace quilmark {

namespace {

constexpr uint32_t kReasonClose = 0x8000'0000;
constexpr uint64_t kPageBytes = 4'096;  // no record crosses a page
constexpr size_t kReadBytes = 64 * 1024;

// $Max: byte offsets.
constexpr size_t kMaximumSize = 0, kAllocationDelta = 8, kJournalId = 16, kLowestValid = 24,
                 kMaxBytes = 32;

// Where the fields of a record stand, by its major version (USN_RECORD_V2 and _V3 of winioctl.h).
struct RecordLayout {
  size_t frn, parentFrn, usn, timestamp, reason, attributes, nameLength, nameOffset, least;
};
constexpr RecordLayout kVersion2{8, 16, 24, 32, 40, 52, 56, 58, 60};
constexpr RecordLayout kVersion3{8, 24, 40, 48, 56, 68, 72, 74, 76};

struct ParsedRecord {
  UsnRecord record;
  uint64_t timestamp = 0;
};

// Empty if the record is of another version, has a reference that does not fit 64 bits, or is damaged.
std::optional<ParsedRecord> ParseStored(std::span<const std::byte> bytes) {
  const auto major = LoadLe<uint16_t>(bytes, 4);
  if (major != 2 && major != 3) return std::nullopt;
  const RecordLayout& at = major == 2 ? kVersion2 : kVersion3;
  if (bytes.size() < at.least) return std::nullopt;
  // Names are whole units; damage may leave half of one.
  const size_t length = LoadLe<uint16_t>(bytes, at.nameLength) & ~size_t{1};
  const size_t offset = LoadLe<uint16_t>(bytes, at.nameOffset);
  if (!Fits(bytes.size(), offset, length)) return std::nullopt;
  if (major == 3) {
    const bool isLong =
        LoadLe<uint64_t>(bytes, at.frn + 8) != 0 || LoadLe<uint64_t>(bytes, at.parentFrn + 8) != 0;
    if (isLong) return std::nullopt;
  }
  return ParsedRecord{.record = {.frn = FileReference(LoadLe<uint64_t>(bytes, at.frn)),
                                 .parentFrn = FileReference(LoadLe<uint64_t>(bytes, at.parentFrn)),
                                 .usn = LoadLe<int64_t>(bytes, at.usn),
                                 .reason = LoadLe<uint32_t>(bytes, at.reason),
                                 .attributes = LoadLe<uint32_t>(bytes, at.attributes),
                                 .name = bytes.subspan(offset, length)},
                      .timestamp = LoadLe<uint64_t>(bytes, at.timestamp)};
}

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
  constexpr size_t kLeastRecord = 32;  // length, version and what every version has
  size_t offset = 0;
  while (Fits(page.size(), offset, kLeastRecord)) {
    const size_t length = LoadLe<uint32_t>(page, offset);
    // Zeros fill the rest of a page; anything else that is no length is damage.
    if (length < kLeastRecord || length % 8 != 0 || !Fits(page.size(), offset, length)) break;
    const auto stored = ParseStored(page.subspan(offset, length));
    if (stored && IsWanted(stored->record, range)) {
      const size_t needed = UsnRecordLength(stored->record.name.size() / sizeof(char16_t));
      position = start + offset;
      if (needed > output.size() - used) return false;
      PutUsnRecord(output.subspan(used), stored->record, stored->timestamp);
      used += needed;
    }
    offset += length;
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
