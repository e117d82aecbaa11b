#include "platform/ntfs/mft_record.h"

#include <algorithm>

#include "platform/bytes.h"

namespace quilmark {

namespace {

// The layouts are those of the Linux-NTFS project's documentation. Byte offsets in a record:
constexpr size_t kFixupOffset = 4, kFixupCount = 6, kSequence = 16, kFirstAttribute = 20, kFlags = 22,
                 kUsedBytes = 24, kBaseReference = 32, kLeastHeader = 42;
constexpr uint16_t kFlagInUse = 1, kFlagDirectory = 2;
constexpr uint32_t kFileMagic = 0x454C'4946;  // "FILE"
constexpr size_t kFixupStride = 512;          // whatever the volume's sector size

// In an attribute:
constexpr size_t kLength = 4, kNonResident = 8, kNameLength = 9, kNameOffset = 10, kValueLength = 16,
                 kValueOffset = 20, kLowestVcn = 16, kRunOffset = 32, kAllocated = 40, kDataBytes = 48,
                 kInitialized = 56;
constexpr size_t kLeastResident = 24, kLeastNonResident = 64;
constexpr uint32_t kEndMark = 0xFFFF'FFFF;

// In a $FILE_NAME:
constexpr size_t kNameUnits = 64, kNameSpace = 65, kName = 66;

bool TakeResident(std::span<const std::byte> bytes, NtfsAttribute& attribute) {
  const size_t length = LoadLe<uint32_t>(bytes, kValueLength);
  const size_t offset = LoadLe<uint16_t>(bytes, kValueOffset);
  if (!Fits(bytes.size(), offset, length)) return false;
  attribute.value = bytes.subspan(offset, length);
  attribute.dataBytes = length;
  attribute.initializedBytes = length;
  return true;
}

bool TakeNonResident(std::span<const std::byte> bytes, NtfsAttribute& attribute) {
  if (bytes.size() < kLeastNonResident) return false;
  const size_t offset = LoadLe<uint16_t>(bytes, kRunOffset);
  if (offset > bytes.size()) return false;
  attribute.isResident = false;
  attribute.runs = bytes.subspan(offset);
  attribute.lowestVcn = StreamCluster(LoadLe<uint64_t>(bytes, kLowestVcn));
  attribute.allocatedBytes = LoadLe<uint64_t>(bytes, kAllocated);
  attribute.dataBytes = LoadLe<uint64_t>(bytes, kDataBytes);
  attribute.initializedBytes = LoadLe<uint64_t>(bytes, kInitialized);
  return true;
}

}  // namespace

bool ApplyFixups(std::span<std::byte> block) {
  if (block.size() < kFixupStride || block.size() % kFixupStride != 0) return false;
  const size_t offset = LoadLe<uint16_t>(block, kFixupOffset);
  const size_t count = LoadLe<uint16_t>(block, kFixupCount);
  const size_t strides = block.size() / kFixupStride;
  if (count != strides + 1 || !Fits(block.size(), offset, count * 2)) return false;
  const auto written = LoadLe<uint16_t>(block, offset);
  for (size_t i = 0; i < strides; ++i) {
    const size_t last = (i + 1) * kFixupStride - 2;
    if (LoadLe<uint16_t>(block, last) != written) return false;
    StoreLe(block, last, LoadLe<uint16_t>(block, offset + 2 + i * 2));
  }
  return true;
}

std::optional<MftRecordHeader> ParseRecordHeader(std::span<const std::byte> record) {
  if (record.size() < kLeastHeader || LoadLe<uint32_t>(record, 0) != kFileMagic) return std::nullopt;
  const auto flags = LoadLe<uint16_t>(record, kFlags);
  return MftRecordHeader{.sequence = LoadLe<uint16_t>(record, kSequence),
                         .inUse = (flags & kFlagInUse) != 0,
                         .isDirectory = (flags & kFlagDirectory) != 0,
                         .baseReference = FileReference(LoadLe<uint64_t>(record, kBaseReference)),
                         .firstAttribute = LoadLe<uint16_t>(record, kFirstAttribute)};
}

std::optional<NtfsAttribute> NextAttribute(AttributeCursor& cursor) {
  const auto record = cursor.record;
  if (!Fits(record.size(), kUsedBytes, sizeof(uint32_t))) {
    cursor.malformed = true;
    return std::nullopt;
  }
  // What lies behind the used bytes is left over from earlier attributes.
  const size_t used = std::min<size_t>(LoadLe<uint32_t>(record, kUsedBytes), record.size());
  const bool hasType = Fits(used, cursor.offset, sizeof(uint32_t));
  if (hasType && LoadLe<uint32_t>(record, cursor.offset) == kEndMark) return std::nullopt;
  cursor.malformed = true;  // until every length has been tested
  if (!Fits(used, cursor.offset, kLeastResident)) return std::nullopt;
  NtfsAttribute attribute{.type = LoadLe<uint32_t>(record, cursor.offset)};
  const size_t length = LoadLe<uint32_t>(record, cursor.offset + kLength);
  if (length < kLeastResident || !Fits(used, cursor.offset, length)) return std::nullopt;
  const auto bytes = record.subspan(cursor.offset, length);
  const size_t nameBytes = size_t{LoadLe<uint8_t>(bytes, kNameLength)} * 2;
  const size_t nameOffset = LoadLe<uint16_t>(bytes, kNameOffset);
  if (nameBytes != 0) {
    if (!Fits(length, nameOffset, nameBytes)) return std::nullopt;
    attribute.name = bytes.subspan(nameOffset, nameBytes);
  }
  const bool isNonResident = LoadLe<uint8_t>(bytes, kNonResident) != 0;
  if (!(isNonResident ? TakeNonResident(bytes, attribute) : TakeResident(bytes, attribute))) {
    return std::nullopt;
  }
  cursor.malformed = false;
  cursor.offset += length;
  return attribute;
}

std::optional<FileNameValue> ParseFileName(std::span<const std::byte> value) {
  if (value.size() < kName) return std::nullopt;
  const size_t nameBytes = size_t{LoadLe<uint8_t>(value, kNameUnits)} * 2;
  const auto space = LoadLe<uint8_t>(value, kNameSpace);
  if (space > 3 || !Fits(value.size(), kName, nameBytes)) return std::nullopt;
  return FileNameValue{.parent = FileReference(LoadLe<uint64_t>(value, 0)),
                       .space = static_cast<NameSpace>(space),
                       .name = value.subspan(kName, nameBytes)};
}

}  // namespace quilmark
