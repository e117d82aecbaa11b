#include "platform/ntfs/mft_facts.h"

#include <limits>
#include <span>
#include <vector>

#include "platform/bytes.h"
#include "platform/file_reference.h"
#include "platform/ntfs/mft_record.h"

namespace quilmark {

namespace {

// Byte offsets in a $STANDARD_INFORMATION, and its length before NTFS 3.0.
constexpr size_t kCreated = 0, kModified = 8, kShortForm = 48;

// Sizes and dates are signed numbers to NTFS.
constexpr uint64_t kMost = std::numeric_limits<int64_t>::max();

struct Dates {
  FileTime modified = 0, created = 0;
};

// What the attributes of one record say.
struct Parsed {
  std::optional<Dates> dates;
  std::optional<DataSizes> data;      // by the first part of the unnamed $DATA
  bool hasLaterPart = false;          // of the unnamed $DATA
  std::optional<uint64_t> listBytes;  // of the $ATTRIBUTE_LIST
  bool isWhole = false;               // no attribute that does not fit
};

FileTime DateAt(std::span<const std::byte> value, size_t offset) {
  const auto date = LoadLe<uint64_t>(value, offset);
  return date <= kMost ? date : 0;
}

void TakeData(const NtfsAttribute& attribute, Parsed& parsed) {
  const bool isFirstPart = attribute.isResident || attribute.lowestVcn == StreamCluster(0);
  if (!isFirstPart) {
    parsed.hasLaterPart = true;
  } else if (!parsed.data) {
    parsed.data = {attribute.dataBytes,
                   attribute.isResident ? attribute.dataBytes : attribute.allocatedBytes};
  }
}

Parsed Parse(std::span<const std::byte> record, size_t firstAttribute) {
  Parsed parsed;
  AttributeCursor cursor{.record = record, .offset = firstAttribute};
  while (const auto attribute = NextAttribute(cursor)) {
    if (attribute->type == kStandardInformation && attribute->value.size() >= kShortForm) {
      parsed.dates = {DateAt(attribute->value, kModified), DateAt(attribute->value, kCreated)};
    } else if (attribute->type == kAttributeList) {
      parsed.listBytes = attribute->dataBytes;
    } else if (attribute->type == kData && attribute->name.empty()) {
      TakeData(*attribute, parsed);
    }
  }
  parsed.isWhole = !cursor.malformed;
  return parsed;
}

// The size by the record that holds the first part of the file's unnamed $DATA.
std::optional<uint64_t> SizeInHolder(MftReader& reader, RecordNumber holder, RecordNumber number) {
  std::vector<std::byte> record(reader.geometry.recordBytes);
  const auto header = ReadRecord(reader, holder, record);
  if (!header || !header->inUse || RecordNumberOf(header->baseReference) != number) return std::nullopt;
  const auto data = Parse(record, header->firstAttribute).data;
  return data ? std::optional(data->logical) : std::nullopt;
}

// The size by the record that the list names. 0 if it names none: the file has no unnamed $DATA.
std::optional<uint64_t> ListedSize(MftReader& reader, std::span<const std::byte> base,
                                   RecordNumber number, uint64_t listBytes) {
  const auto list = ReadAttributeList(reader, base);
  AttributeListCursor cursor{.list = list};
  while (const auto listed = NextListed(cursor)) {
    if (listed->type != kData || !listed->name.empty()) continue;
    return SizeInHolder(reader, RecordNumberOf(listed->holder), number);
  }
  const bool isWhole = cursor.offset == listBytes;
  return isWhole ? std::optional<uint64_t>(0) : std::nullopt;
}

// Of a file whose base record says `parsed`; empty where that is not known.
std::optional<uint64_t> SizeOf(MftReader& reader, std::span<const std::byte> base, RecordNumber number,
                               const Parsed& parsed) {
  if (parsed.data) return parsed.data->logical;
  if (!parsed.isWhole || parsed.hasLaterPart) return std::nullopt;
  if (parsed.listBytes) return ListedSize(reader, base, number, *parsed.listBytes);
  return 0;
}

bool IsBaseOf(const MftRecordHeader& header, FileReference reference) {
  return header.inUse && header.baseReference == FileReference(0) &&
         header.sequence == SequenceOf(reference);
}

}  // namespace

std::optional<FileFacts> ReadMftFacts(MftReader& reader, FileReference reference) {
  const RecordNumber number = RecordNumberOf(reference);
  std::vector<std::byte> record(reader.geometry.recordBytes);
  const auto header = ReadRecord(reader, number, record);
  if (!header || !IsBaseOf(*header, reference)) return std::nullopt;
  const Parsed parsed = Parse(record, header->firstAttribute);
  if (!parsed.dates) return std::nullopt;
  const auto size =
      header->isDirectory ? std::optional<uint64_t>(0) : SizeOf(reader, record, number, parsed);
  if (!size || *size > kMost) return std::nullopt;
  return FileFacts{.size = *size,
                   .modified = parsed.dates->modified,
                   .created = parsed.dates->created,
                   .isDirectory = header->isDirectory};
}

std::optional<DataSizes> SizesInRecord(std::span<const std::byte> record, FileReference reference) {
  const auto header = ParseRecordHeader(record);
  if (!header || !IsBaseOf(*header, reference)) return std::nullopt;
  if (header->isDirectory) return DataSizes{};
  std::vector<std::byte> fixed(record.begin(), record.end());
  // Where the check words are not those of a record on disk, they have been put back already.
  const Parsed parsed =
      Parse(ApplyFixups(fixed) ? std::span<const std::byte>(fixed) : record, header->firstAttribute);
  if (parsed.data) return parsed.data->logical <= kMost ? parsed.data : std::nullopt;
  const bool isElsewhere = !parsed.isWhole || parsed.hasLaterPart || parsed.listBytes;
  return isElsewhere ? std::nullopt : std::optional(DataSizes{});
}

}  // namespace quilmark
