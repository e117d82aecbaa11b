// Records of the change journal, as FSCTL_READ_USN_JOURNAL and FSCTL_ENUM_USN_DATA deliver them: blocks
// of eight bytes of position and then USN_RECORD_V2 structures (winioctl.h).
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "platform/file_reference.h"

namespace quilmark {

inline constexpr uint32_t kUsnReasonDataOverwrite = 0x0000'0001;
inline constexpr uint32_t kUsnReasonDataExtend = 0x0000'0002;
inline constexpr uint32_t kUsnReasonDataTruncation = 0x0000'0004;
inline constexpr uint32_t kUsnReasonBasicInfoChange = 0x0000'8000;
inline constexpr uint32_t kUsnReasonFileCreate = 0x0000'0100;
inline constexpr uint32_t kUsnReasonFileDelete = 0x0000'0200;
inline constexpr uint32_t kUsnReasonRenameOldName = 0x0000'1000;
inline constexpr uint32_t kUsnReasonRenameNewName = 0x0000'2000;

// Of a file that comes, goes, or is called something else.
inline constexpr uint32_t kUsnReasonsOfNames =
    kUsnReasonFileCreate | kUsnReasonFileDelete | kUsnReasonRenameOldName | kUsnReasonRenameNewName;

inline constexpr uint32_t kFileAttributeDirectory = 0x10;

struct UsnRecord {
  FileReference frn;
  FileReference parentFrn;
  int64_t usn = 0;
  uint32_t reason = 0;
  uint32_t attributes = 0;
  std::span<const std::byte> name;  // UTF-16LE at any alignment; an odd last byte is no part of it
};

// Of the position that stands in front of the records of a block.
inline constexpr size_t kUsnPositionBytes = 8;

// Position in a block, which must outlive the records.
struct UsnCursor {
  std::span<const std::byte> block;
  size_t offset = kUsnPositionBytes;
  bool malformed = false;
};

// The next record, or empty at the end of the block. Empty with `malformed` set at a record that does
// not fit: the rest of the block is lost, since only that record's length could lead past it. The
// version is not looked at.
std::optional<UsnRecord> NextUsnRecord(UsnCursor& cursor);

// Copies a name into `units`, whose memory a loop reuses; the view is of `units`. A backslash, which
// other systems may have put into it, becomes kNameBackslash (utf.h).
std::u16string_view NameUnits(const UsnRecord& record, std::u16string& units);

// Bytes that PutUsnRecord writes for a name of so many units.
size_t UsnRecordLength(size_t nameUnits);

// Writes a record of version 2 at the start of `to`. REQUIRES UsnRecordLength(...) <= to.size() and at
// most 32,000 units.
void PutUsnRecord(std::span<std::byte> to, const UsnRecord& record, uint64_t timestamp);

}  // namespace quilmark
