#include "platform/ntfs/mft_reader.h"

#include <algorithm>

#include "platform/bytes.h"
#include "platform/file_reference.h"

namespace quilmark {

namespace {

// NTFS itself stops at 256 KiB, a limit of the cache manager of Windows.
constexpr uint64_t kMostAttributeList = 256 * 1024;

// Byte offsets in an entry of an $ATTRIBUTE_LIST.
constexpr size_t kEntryLength = 4, kEntryNameLength = 6, kEntryNameOffset = 7, kEntryVcn = 8,
                 kEntryHolder = 16, kLeastEntry = 26;

bool IsNamed(std::span<const std::byte> name, std::u16string_view wanted) {
  const auto units = std::as_bytes(std::span(wanted));
  return std::equal(name.begin(), name.end(), units.begin(), units.end());
}

// Adds one part of an attribute. The first part says how large the whole is, and how much was written.
bool AddPart(NtfsStream& stream, const NtfsAttribute& part, const NtfsGeometry& geometry) {
  if (part.isResident) {
    stream.resident.assign(part.value.begin(), part.value.end());
    stream.size = part.value.size();
    stream.initialized = stream.size;
    return true;
  }
  if (part.lowestVcn == StreamCluster(0)) {
    stream.size = part.dataBytes;
    stream.initialized = std::min(part.initializedBytes, part.dataBytes);
  }
  return AppendRuns(stream, part, geometry);
}

// The part that begins at `lowestVcn`, or the first one of that type and name.
std::optional<NtfsAttribute> FindAttribute(std::span<const std::byte> record, uint32_t type,
                                           std::u16string_view name,
                                           std::optional<StreamCluster> lowestVcn) {
  const auto header = ParseRecordHeader(record);
  if (!header) return std::nullopt;
  AttributeCursor cursor{.record = record, .offset = header->firstAttribute};
  while (const auto attribute = NextAttribute(cursor)) {
    const bool isPart = !lowestVcn || attribute->isResident || attribute->lowestVcn == *lowestVcn;
    if (attribute->type == type && isPart && IsNamed(attribute->name, name)) return attribute;
  }
  return std::nullopt;
}

std::optional<NtfsStream> StreamOfRecord(std::span<const std::byte> record, uint32_t type,
                                         std::u16string_view name, const NtfsGeometry& geometry) {
  const auto attribute = FindAttribute(record, type, name, std::nullopt);
  NtfsStream stream;
  if (!attribute || !AddPart(stream, *attribute, geometry)) return std::nullopt;
  return stream;
}

// Joins the parts that the list names.
bool JoinListed(MftReader& reader, std::span<const std::byte> base, RecordNumber baseNumber,
                std::span<const std::byte> list, uint32_t type, std::u16string_view name,
                NtfsStream& stream) {
  std::vector<std::byte> other(reader.geometry.recordBytes);
  AttributeListCursor cursor{.list = list};
  bool found = false;
  while (const auto listed = NextListed(cursor)) {
    if (reader.IsCancelled()) return false;
    if (listed->type != type || !IsNamed(listed->name, name)) continue;
    const RecordNumber holder = RecordNumberOf(listed->holder);
    std::span<const std::byte> record = base;
    if (holder != baseNumber) {
      const auto header = ReadRecord(reader, holder, other);
      if (!header || !header->inUse || RecordNumberOf(header->baseReference) != baseNumber) return false;
      record = other;
    }
    const auto part = FindAttribute(record, type, name, listed->lowestVcn);
    if (!part || !AddPart(stream, *part, reader.geometry)) return false;
    found = true;
  }
  return found;
}

// Record 0, or its copy in the mirror.
bool ReadFirstRecord(MftReader& reader, std::span<std::byte> record) {
  for (const ClusterNumber cluster : {reader.geometry.mftCluster, reader.geometry.mirrorCluster}) {
    const auto place = OffsetOf(cluster, reader.geometry.clusterBytes);
    if (!place || reader.source->ReadAt(*place, record) != record.size() || !ApplyFixups(record))
      continue;
    const auto header = ParseRecordHeader(record);
    if (header && header->inUse && FindAttribute(record, kData, {}, StreamCluster(0))) return true;
  }
  return false;
}

// Adds the parts of the $MFT's runs that stand in other records, each found through the parts before it.
// A $MFT of which a part is damaged is used as far as it can be followed.
void FollowMftParts(MftReader& reader, std::span<const std::byte> first) {
  const auto list = ReadAttributeList(reader, first);
  std::vector<std::byte> record(reader.geometry.recordBytes);
  AttributeListCursor cursor{.list = list};
  while (const auto listed = NextListed(cursor)) {
    if (reader.IsCancelled()) return;
    if (listed->type != kData || !listed->name.empty() || listed->lowestVcn == StreamCluster(0))
      continue;
    const auto header = ReadRecord(reader, RecordNumberOf(listed->holder), record);
    if (!header || !header->inUse || RecordNumberOf(header->baseReference) != kMftRecord) return;
    const auto part = FindAttribute(record, kData, {}, listed->lowestVcn);
    if (!part || part->isResident || !AppendRuns(reader.mft, *part, reader.geometry)) return;
  }
}

}  // namespace

uint64_t MftReader::VolumeBytes() const {
  const uint64_t told = geometry.sectors * geometry.sectorBytes;
  const uint64_t there = source->Size();  // 0 for a device that does not tell
  return there == 0 ? told : std::min(told + geometry.sectorBytes, there);
}

std::optional<MftReader> OpenMft(std::unique_ptr<ByteSource> source,
                                 const std::atomic<bool>* cancelled) {
  std::vector<std::byte> sector(kBootSectorBytes);
  if (source == nullptr || source->ReadAt(ByteOffset(0), sector) != sector.size()) return std::nullopt;
  const auto geometry = ParseBootSector(sector);
  if (!geometry) return std::nullopt;
  MftReader reader{.source = std::move(source), .geometry = *geometry, .cancelled = cancelled};
  std::vector<std::byte> record(geometry->recordBytes);
  if (!ReadFirstRecord(reader, record)) return std::nullopt;
  const auto data = FindAttribute(record, kData, {}, StreamCluster(0));
  AddPart(reader.mft, *data, *geometry);
  const uint64_t fitting =
      std::min(reader.mft.initialized, reader.VolumeBytes()) / geometry->recordBytes;
  reader.recordCount = std::min(fitting, kRecordNumberMask);
  FollowMftParts(reader, record);
  if (reader.IsCancelled()) return std::nullopt;
  return reader;
}

std::optional<MftRecordHeader> ReadRecord(MftReader& reader, RecordNumber number,
                                          std::span<std::byte> record) {
  if (!reader.HasRecord(number)) return std::nullopt;
  const StreamOffset offset = reader.OffsetOfRecord(number);
  if (ReadStream(*reader.source, reader.mft, offset, record) != record.size()) return std::nullopt;
  const auto header = ParseRecordHeader(record);
  if (!header || !ApplyFixups(record)) return std::nullopt;
  return header;
}

std::optional<ListedAttribute> NextListed(AttributeListCursor& cursor) {
  if (!Fits(cursor.list.size(), cursor.offset, kLeastEntry)) return std::nullopt;
  const auto rest = cursor.list.subspan(cursor.offset);
  const size_t length = LoadLe<uint16_t>(rest, kEntryLength);
  if (length < kLeastEntry || length > rest.size()) return std::nullopt;
  const size_t nameBytes = size_t{LoadLe<uint8_t>(rest, kEntryNameLength)} * 2;
  const size_t nameOffset = LoadLe<uint8_t>(rest, kEntryNameOffset);
  if (nameBytes != 0 && !Fits(length, nameOffset, nameBytes)) return std::nullopt;
  cursor.offset += length;
  return ListedAttribute{
      .type = LoadLe<uint32_t>(rest, 0),
      .lowestVcn = StreamCluster(LoadLe<uint64_t>(rest, kEntryVcn)),
      .holder = FileReference(LoadLe<uint64_t>(rest, kEntryHolder)),
      .name = nameBytes != 0 ? rest.subspan(nameOffset, nameBytes) : std::span<const std::byte>()};
}

std::vector<std::byte> ReadAttributeList(MftReader& reader, std::span<const std::byte> record) {
  const auto list = StreamOfRecord(record, kAttributeList, {}, reader.geometry);
  if (!list) return {};
  std::vector<std::byte> bytes(static_cast<size_t>(std::min(list->size, kMostAttributeList)));
  bytes.resize(ReadStream(*reader.source, *list, StreamOffset(0), bytes));
  return bytes;
}

// The stream of a record that was read already.
static std::optional<NtfsStream> StreamOfFile(MftReader& reader, std::span<const std::byte> record,
                                              RecordNumber number, uint32_t type,
                                              std::u16string_view name) {
  const auto list = ReadAttributeList(reader, record);
  if (list.empty()) return StreamOfRecord(record, type, name, reader.geometry);
  NtfsStream stream;
  if (!JoinListed(reader, record, number, list, type, name, stream)) return std::nullopt;
  return stream;
}

std::optional<NtfsStream> FindStream(MftReader& reader, RecordNumber number, uint32_t type,
                                     std::u16string_view name) {
  std::vector<std::byte> record(reader.geometry.recordBytes);
  const auto header = ReadRecord(reader, number, record);
  if (!header || !header->inUse) return std::nullopt;
  return StreamOfFile(reader, record, number, type, name);
}

std::optional<NtfsStream> FindStreamOfFile(MftReader& reader, FileReference reference, uint32_t type,
                                           std::u16string_view name) {
  const RecordNumber number = RecordNumberOf(reference);
  std::vector<std::byte> record(reader.geometry.recordBytes);
  const auto header = ReadRecord(reader, number, record);
  if (!header || !header->inUse || header->sequence != SequenceOf(reference)) return std::nullopt;
  return StreamOfFile(reader, record, number, type, name);
}

}  // namespace quilmark
