// Any bytes as the stream of a change journal: reading moves on, gives records that a parser takes, and
// they are those of a plain walk page by page, however little room there is.
#include <optional>
#include <vector>

#include "platform/bytes.h"
#include "platform/ntfs/change_journal.h"
#include "platform/usn_record.h"
#include "support/fuzz_input.h"
#include "support/ntfs_builder.h"

using namespace quilmark;

namespace {

constexpr size_t kPage = 4'096, kMostBytes = 4 * kPage;
constexpr uint64_t kJournalId = 0x1122'3344;
const std::atomic<bool> kNotCancelled = false;

struct Seen {
  uint64_t frn = 0, parentFrn = 0;
  int64_t usn = 0;
  uint32_t reason = 0, attributes = 0;
  Bytes name;
  bool operator==(const Seen&) const = default;
};

Bytes Copy(std::span<const std::byte> bytes) { return {bytes.begin(), bytes.end()}; }

bool IsWanted(uint32_t reason, const JournalRange& range) {
  return (reason & range.reasonMask) != 0 && (!range.onlyOnClose || reason >> 31 != 0);
}

// One record of version 2 or 3 as it is stored; the fields of the latter stand behind longer references.
std::optional<Seen> ReadStored(std::span<const std::byte> record) {
  const auto version = LoadLe<uint16_t>(record, 4);
  if (version != 2 && version != 3) return std::nullopt;
  const size_t extra = version == 3 ? 16 : 0, fixed = 60 + extra;
  if (record.size() < fixed) return std::nullopt;
  if (version == 3 && (LoadLe<uint64_t>(record, 16) != 0 || LoadLe<uint64_t>(record, 32) != 0)) {
    return std::nullopt;
  }
  const size_t length = LoadLe<uint16_t>(record, 56 + extra) / 2 * 2u;
  const size_t offset = LoadLe<uint16_t>(record, 58 + extra);
  if (offset + length > record.size()) return std::nullopt;
  return Seen{.frn = LoadLe<uint64_t>(record, 8),
              .parentFrn = LoadLe<uint64_t>(record, 16 + extra / 2),
              .usn = LoadLe<int64_t>(record, 24 + extra),
              .reason = LoadLe<uint32_t>(record, 40 + extra),
              .attributes = LoadLe<uint32_t>(record, 52 + extra),
              .name = Copy(record.subspan(offset, length))};
}

// A page ends at what is no length of a record.
std::vector<Seen> WalkPlainly(std::span<const std::byte> bytes, const JournalRange& range) {
  std::vector<Seen> all;
  for (size_t start = 0; start < bytes.size(); start += kPage) {
    const auto page = bytes.subspan(start, std::min(kPage, bytes.size() - start));
    for (size_t at = 0; at + 32 <= page.size();) {
      const size_t length = LoadLe<uint32_t>(page, at);
      if (length < 32 || length % 8 != 0 || length > page.size() - at) break;
      const auto record = ReadStored(page.subspan(at, length));
      if (record && IsWanted(record->reason, range)) all.push_back(*record);
      at += length;
    }
  }
  return all;
}

void TakeRecords(std::span<const std::byte> block, std::vector<Seen>& all) {
  UsnCursor cursor{.block = block};
  while (const auto record = NextUsnRecord(cursor)) {
    all.push_back({record->frn.value, record->parentFrn.value, record->usn, record->reason,
                   record->attributes, Copy(record->name)});
  }
  Require(!cursor.malformed);
}

// The records from the first on, in blocks of `room` bytes, which is enough for the longest.
std::vector<Seen> ReadAll(MftReader& reader, const ChangeJournal& journal, JournalRange range,
                          size_t room) {
  std::vector<Seen> all;
  Bytes output(room);
  for (;;) {
    const auto reply = ReadChangeJournal(*reader.source, journal, range, output, kNotCancelled);
    Require(reply.error == 0 && reply.bytes >= kUsnPositionBytes && reply.bytes <= room);
    TakeRecords(std::span(output).first(reply.bytes), all);
    const auto next = LoadLe<int64_t>(output, 0);
    Require(next <= journal.nextUsn);
    if (next == journal.nextUsn) return all;
    Require(next > range.startUsn && reply.bytes > kUsnPositionBytes);
    range.startUsn = next;
  }
}

uint32_t ErrorOf(MftReader& reader, const ChangeJournal& journal, int64_t start, size_t room) {
  Bytes output(room);
  return ReadChangeJournal(*reader.source, journal, {.startUsn = start}, output, kNotCancelled).error;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  FuzzInput input = InputOf(data, size);
  const auto flags = input.Take<uint8_t>();
  const uint64_t firstUsn = kPage * (flags & 3);
  const JournalRange range{.reasonMask = (flags & 4) != 0 ? 0x0000'3300 : 0xFFFF'FFFF,
                           .onlyOnClose = (flags & 8) != 0};
  const Bytes bytes = Copy(input.TakeBytes(kMostBytes));
  const MemoryVolume volume = NtfsVolumeBuilder().Journal(kJournalId, firstUsn, bytes).Build();
  auto reader = OpenMft(volume.Open());
  const auto journal = OpenChangeJournal(*reader);
  Require(journal && journal->id == kJournalId);
  Require(journal->nextUsn == static_cast<int64_t>(firstUsn + bytes.size()));
  Require(journal->firstUsn == (bytes.empty() ? journal->nextUsn : static_cast<int64_t>(firstUsn)));

  const auto expected = WalkPlainly(bytes, range);
  Require(ReadAll(*reader, *journal, range, 65'536) == expected);
  Require(ReadAll(*reader, *journal, range, kPage + 64) == expected);
  Require(ErrorOf(*reader, *journal, journal->nextUsn + 1, kPage) == kErrorInvalidParameter);
  Require(ErrorOf(*reader, *journal, 0, kUsnPositionBytes - 1) == kErrorMoreData);
  if (journal->firstUsn > 1) {
    Require(ErrorOf(*reader, *journal, journal->firstUsn - 1, kPage) == kErrorJournalEntryDeleted);
  }
  if (!WalkPlainly(bytes, {}).empty()) {
    Require(ErrorOf(*reader, *journal, 0, kUsnPositionBytes + 8) == kErrorMoreData);
  }
  return 0;
}
