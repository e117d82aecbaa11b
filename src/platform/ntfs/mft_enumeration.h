// The files of a volume out of its $MFT, as FSCTL_ENUM_USN_DATA delivers them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "platform/ntfs/mft_reader.h"
#include "platform/usn_record.h"
#include "platform/volume_device.h"

namespace quilmark {

// A file of the volume: one for each base record in use that has a name. The name lies in the
// enumeration's memory and is good until its next call.
struct MftFile {
  UsnRecord record;
  uint64_t changed = 0;  // FILETIME of the last change of the record
};

// A stretch of the $MFT in memory, and what reading it takes.
struct MftEnumeration {
  std::vector<std::byte> stretch;
  std::vector<char> isFixed;     // of each record in the stretch: its fix-ups are applied
  RecordNumber firstRecord;      // of the stretch
  uint64_t records = 0;          // in the stretch
  std::vector<std::byte> other;  // a record elsewhere that holds a name

  // Whether the record is in the stretch.
  bool Holds(RecordNumber number) const { return IndexOf(number) < records; }
  // Of a record in the stretch. Behind the last one for any other.
  uint64_t IndexOf(RecordNumber number) const {
    return number.value - firstRecord.value;
  }  // wraps below
};

// The file of record `number`; empty where there is none, and where its record is damaged. Once the
// reader is cancelled it may be empty as well, or have the lesser of its names: the caller has to ask
// IsCancelled.
[[nodiscard]] std::optional<MftFile> FileAt(MftReader& reader, MftEnumeration& enumeration,
                                            RecordNumber number);

// Which files to enumerate: from record `number` on, those whose last journal record lies in [lowUsn,
// highUsn]. `hasJournal` clear: what files remember of a former journal counts as 0.
struct MftRange {
  RecordNumber number;
  int64_t lowUsn = 0, highUsn = 0;
  bool hasJournal = false;
};

// Fills `output`, which may have any size, with the next record number and then USN records. Error 38
// behind the last file, 234 if not even one record has room, 995 once the reader is cancelled.
[[nodiscard]] VolumeDevice::Reply EnumerateMft(MftReader& reader, MftEnumeration& enumeration,
                                               const MftRange& range, std::span<std::byte> output);

}  // namespace quilmark
