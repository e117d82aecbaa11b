#include "platform/ntfs/mft_enumeration.h"

#include <algorithm>

#include "platform/bytes.h"
#include "platform/file_reference.h"

namespace quilmark {

namespace {

constexpr size_t kStretchBytes = 1 << 20;  // chosen: stays in the second-level cache while it is parsed

// Byte offsets in a $STANDARD_INFORMATION; the longer form came with NTFS 3.0.
constexpr size_t kRecordChanged = 16, kAttributes = 32, kUsn = 64, kShortForm = 48, kLongForm = 72;

// A list that names more holders of names than this is damage: NTFS gives a file at most 1,024 links
// (CreateHardLink).
constexpr int kMostHolders = 1'024;

// Lower is better: any name but the short one will do where a file has several.
int RankOf(NameSpace space) {
  constexpr int kRanks[] = {2, 0, 3, 1};  // POSIX, Win32, DOS, both
  return kRanks[static_cast<size_t>(space)];
}

struct BestName {
  std::optional<FileNameValue> value;
  bool IsBetterThan(const BestName& other) const {
    return value && (!other.value || RankOf(value->space) < RankOf(other.value->space));
  }
  void Take(const FileNameValue& other) {
    if (BestName{other}.IsBetterThan(*this)) value = other;
  }
  bool IsGood() const { return value && value->space != NameSpace::kDos; }
};

void TakeStandardInformation(std::span<const std::byte> value, MftFile& file) {
  if (value.size() < kShortForm) return;
  file.changed = LoadLe<uint64_t>(value, kRecordChanged);
  file.record.attributes = LoadLe<uint32_t>(value, kAttributes);
  if (value.size() >= kLongForm) file.record.usn = LoadLe<int64_t>(value, kUsn);
}

struct Parsed {
  MftFile file;
  BestName name;
  bool hasList = false;
};

void TakeAttributes(std::span<const std::byte> record, size_t firstAttribute, Parsed& parsed) {
  AttributeCursor cursor{.record = record, .offset = firstAttribute};
  while (const auto attribute = NextAttribute(cursor)) {
    if (attribute->type > kFileName) return;  // attributes stand in the order of their types
    if (attribute->type == kStandardInformation) {
      TakeStandardInformation(attribute->value, parsed.file);
    } else if (attribute->type == kAttributeList) {
      parsed.hasList = true;
    } else if (attribute->type == kFileName) {
      if (const auto value = ParseFileName(attribute->value)) parsed.name.Take(*value);
    }
  }
}

// Names that an attribute list leads to.
void TakeListedNames(MftReader& reader, MftEnumeration& enumeration, std::span<const std::byte> base,
                     RecordNumber number, BestName& name) {
  const auto list = ReadAttributeList(reader, base);
  AttributeListCursor cursor{.list = list};
  RecordNumber lastHolder = number;
  BestName best = name;
  for (int holders = 0; holders < kMostHolders && !best.IsGood();) {
    const auto listed = NextListed(cursor);
    if (!listed || reader.IsCancelled()) break;
    const RecordNumber holder = RecordNumberOf(listed->holder);
    if (listed->type != kFileName || holder == lastHolder) continue;
    lastHolder = holder;
    ++holders;
    std::vector<std::byte> record(reader.geometry.recordBytes);
    const auto header = ReadRecord(reader, holder, record);
    if (!header || !header->inUse || RecordNumberOf(header->baseReference) != number) continue;
    Parsed found;
    TakeAttributes(record, header->firstAttribute, found);
    if (!found.name.IsBetterThan(best)) continue;
    enumeration.other.swap(record);  // the views follow their memory
    best = found.name;
  }
  name = best;
}

// Brings the stretch that holds `number` into memory. False, with no stretch there, if that was
// cancelled.
bool LoadStretch(MftReader& reader, MftEnumeration& enumeration, RecordNumber number) {
  const uint64_t recordBytes = reader.geometry.recordBytes;
  if (enumeration.Holds(number)) return true;
  enumeration.records = 0;
  const uint64_t perStretch = std::max<uint64_t>(kStretchBytes / recordBytes, 1);
  enumeration.firstRecord = RecordNumber(number.value / perStretch * perStretch);
  const uint64_t count = std::min(perStretch, reader.recordCount - enumeration.firstRecord.value);
  enumeration.stretch.resize(static_cast<size_t>(perStretch * recordBytes));
  const auto buffer = std::span(enumeration.stretch).first(static_cast<size_t>(count * recordBytes));
  const StreamOffset start = reader.OffsetOfRecord(enumeration.firstRecord);
  const size_t got = ReadStream(*reader.source, reader.mft, start, buffer);
  // What cannot be read is no record; a bad place must not cost what lies behind it in the stretch.
  std::fill(buffer.begin() + static_cast<ptrdiff_t>(got), buffer.end(), std::byte{0});
  for (uint64_t lost = got / recordBytes; got < buffer.size() && lost < count; ++lost) {
    if (reader.IsCancelled()) return false;
    const auto record = buffer.subspan(static_cast<size_t>(lost * recordBytes), recordBytes);
    const size_t part = ReadStream(*reader.source, reader.mft, start + lost * recordBytes, record);
    if (part != record.size()) std::fill(record.begin(), record.end(), std::byte{0});
  }
  enumeration.records = count;
  enumeration.isFixed.assign(static_cast<size_t>(count), 0);
  return true;
}

// The record with its fix-ups applied; empty if it is of no use. It may be asked for again.
std::optional<MftRecordHeader> RecordInStretch(MftEnumeration& enumeration, RecordNumber number,
                                               std::span<std::byte> record) {
  const auto header = ParseRecordHeader(record);
  if (!header || !header->inUse || header->baseReference != FileReference(0)) return std::nullopt;
  char& isFixed = enumeration.isFixed[static_cast<size_t>(enumeration.IndexOf(number))];
  if (!isFixed && !ApplyFixups(record)) {
    StoreLe(record, 0, uint32_t{0});  // no FILE record any more
    return std::nullopt;
  }
  isFixed = 1;
  return header;
}

// `number`, or the first record behind it that lies in no hole of the table. Asked at each new stretch.
// REQUIRES reader.HasRecord(number)
RecordNumber NextStoredRecord(const MftReader& reader, const MftEnumeration& enumeration,
                              RecordNumber number) {
  if (enumeration.Holds(number)) return number;
  const StreamOffset stored = NextStored(reader.mft, reader.OffsetOfRecord(number));
  return std::max(number, RecordNumber(stored.value / reader.geometry.recordBytes));
}

}  // namespace

std::optional<MftFile> FileAt(MftReader& reader, MftEnumeration& enumeration, RecordNumber number) {
  if (!reader.HasRecord(number)) return std::nullopt;
  if (!LoadStretch(reader, enumeration, number)) return std::nullopt;
  const size_t recordBytes = reader.geometry.recordBytes;
  const auto record =
      std::span(enumeration.stretch)
          .subspan(static_cast<size_t>(enumeration.IndexOf(number)) * recordBytes, recordBytes);
  const auto header = RecordInStretch(enumeration, number, record);
  if (!header) return std::nullopt;
  Parsed parsed;
  TakeAttributes(record, header->firstAttribute, parsed);
  if (parsed.hasList && !parsed.name.IsGood()) {
    TakeListedNames(reader, enumeration, record, number, parsed.name);
  }
  if (!parsed.name.value) return std::nullopt;
  MftFile& file = parsed.file;
  file.record.frn = MakeReference(number, header->sequence);
  file.record.parentFrn = parsed.name.value->parent;
  file.record.name = parsed.name.value->name;
  if (header->isDirectory) {
    file.record.attributes |= kFileAttributeDirectory;
  } else {
    file.record.attributes &= ~kFileAttributeDirectory;
  }
  return file;
}

VolumeDevice::Reply EnumerateMft(MftReader& reader, MftEnumeration& enumeration, const MftRange& range,
                                 std::span<std::byte> output) {
  if (output.size() < kUsnPositionBytes) return {.error = kErrorMoreData};
  size_t used = kUsnPositionBytes;
  RecordNumber number = range.number;
  for (; reader.HasRecord(number); ++number) {
    number = NextStoredRecord(reader, enumeration, number);
    if (!reader.HasRecord(number)) break;
    auto file = FileAt(reader, enumeration, number);
    if (reader.IsCancelled()) return {.error = kErrorOperationAborted};
    if (!file) continue;
    if (!range.hasJournal) file->record.usn = 0;
    if (file->record.usn < range.lowUsn || file->record.usn > range.highUsn) continue;
    const size_t length = UsnRecordLength(file->record.name.size() / sizeof(char16_t));
    if (length > output.size() - used) break;
    PutUsnRecord(output.subspan(used), file->record, file->changed);
    used += length;
  }
  StoreLe(output, 0, number.value);
  if (used > kUsnPositionBytes) return {.bytes = used};
  return {.error = reader.HasRecord(number) ? kErrorMoreData : kErrorHandleEof};
}

}  // namespace quilmark
