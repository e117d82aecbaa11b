// Records of the change journal: the one place that knows their layout (winioctl.h).
//
// FSCTL_READ_USN_JOURNAL and FSCTL_ENUM_USN_DATA deliver blocks of eight bytes of position and then
// USN_RECORD_V2 structures. On the volume the journal is a row of pages with records of several
// versions. Both readers take any bytes, and test every length before they load what it leads to.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "platform/file_reference.h"

namespace quilmark {

// Reasons of a record, of which one may have several (USN_REASON_... of winioctl.h).
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

// FILE_ATTRIBUTE_DIRECTORY of winnt.h.
inline constexpr uint32_t kFileAttributeDirectory = 0x10;

// What one record says. The name lies in the memory that the record was read from.
struct UsnRecord {
  FileReference frn;
  FileReference parentFrn;
  int64_t usn = 0;
  uint32_t reason = 0;
  uint32_t attributes = 0;
  std::span<const std::byte> name;  // UTF-16LE at any alignment, whole units
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
[[nodiscard]] std::optional<UsnRecord> NextUsnRecord(UsnCursor& cursor);

// A record as it stands on the volume, where the time is kept too.
struct StoredUsnRecord {
  UsnRecord record;
  uint64_t timestamp = 0;  // FILETIME
  size_t offset = 0;       // in its page
};

// Position in a page of the stored journal, or in what was read of one up to its end. `page` must
// outlive the records.
struct StoredUsnCursor {
  std::span<const std::byte> page;
  size_t offset = 0;
};

// The next record of version 2 or 3. Passed over are records of other versions, those with references of
// more than 64 bits, and those whose fields do not fit. Empty at the end of the page, and at what is no
// length of a record, which costs the rest of the page.
[[nodiscard]] std::optional<StoredUsnRecord> NextStoredUsnRecord(StoredUsnCursor& cursor);

// Copies a name into `units`, whose memory a loop reuses; the view is of `units`. A backslash, which
// other systems may have put into it, becomes kNameBackslash (utf.h).
std::u16string_view NameUnits(const UsnRecord& record, std::u16string& units);

// Bytes that PutUsnRecord writes for a name of so many units; a multiple of 8, at least 64.
size_t UsnRecordLength(size_t nameUnits);

// Writes a record of version 2 at the start of `to`; `timestamp` is a FILETIME. REQUIRES
// UsnRecordLength(...) <= to.size() and a name of at most 32,767 units, since a record has 16 bits for
// its length in bytes.
void PutUsnRecord(std::span<std::byte> to, const UsnRecord& record, uint64_t timestamp);

}  // namespace quilmark
