// FILE records of the $MFT and the attributes in them, from any bytes: each function tests every length
// against the bytes it is given before it loads what lies there.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "platform/file_reference.h"
#include "platform/ntfs/places.h"

namespace quilmark {

// Attribute types.
inline constexpr uint32_t kStandardInformation = 0x10, kAttributeList = 0x20, kFileName = 0x30,
                          kData = 0x80, kIndexRoot = 0x90, kIndexAllocation = 0xA0;

// Puts back the last two bytes of every 512 that NTFS keeps in the header of a FILE record or an INDX
// block. False, with the bytes unusable, if the header does not fit or a sector is of another write.
[[nodiscard]] bool ApplyFixups(std::span<std::byte> block);

// The beginning of a FILE record.
struct MftRecordHeader {
  uint16_t sequence = 0;
  bool inUse = false;
  bool isDirectory = false;
  FileReference baseReference;  // 0, or of the record that this one extends
  size_t firstAttribute = 0;    // byte offset
};

// Empty if the bytes are no FILE record. Fix-ups need not be applied: no field lies at a sector's end.
[[nodiscard]] std::optional<MftRecordHeader> ParseRecordHeader(std::span<const std::byte> record);

// One attribute of a record. What does not apply to its form is empty or 0.
struct NtfsAttribute {
  uint32_t type = 0;
  bool isResident = true;
  std::span<const std::byte> name;   // UTF-16LE
  std::span<const std::byte> value;  // of a resident one
  std::span<const std::byte> runs;   // mapping pairs
  StreamCluster lowestVcn;
  uint64_t allocatedBytes = 0, dataBytes = 0, initializedBytes = 0;  // meaningful where lowestVcn is 0
};

// Walks the attributes of a record whose fix-ups are applied.
struct AttributeCursor {
  std::span<const std::byte> record;
  size_t offset = 0;  // MftRecordHeader::firstAttribute
  bool malformed = false;
};

// The next attribute; empty at the end mark, and with `malformed` set at one that does not fit, which
// costs the rest of the record.
[[nodiscard]] std::optional<NtfsAttribute> NextAttribute(AttributeCursor& cursor);

// For which systems a name is. A file with several links has several names of one kind.
enum class NameSpace : uint8_t { kPosix = 0, kWin32 = 1, kDos = 2, kWin32AndDos = 3 };

// One name of a file, in one folder.
struct FileNameValue {
  FileReference parent;
  NameSpace space = NameSpace::kPosix;
  std::span<const std::byte> name;  // UTF-16LE
};

// Parses the value of a $FILE_NAME attribute, which is also the key of a folder's index entry. Empty if
// its name does not lie within it or is for no system that is known.
[[nodiscard]] std::optional<FileNameValue> ParseFileName(std::span<const std::byte> value);

}  // namespace quilmark
