// The change journal of a volume out of $Extend\$UsnJrnl, as FSCTL_QUERY_USN_JOURNAL and
// FSCTL_READ_USN_JOURNAL show it.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "platform/ntfs/mft_reader.h"
#include "platform/volume_device.h"

namespace quilmark {

// Where the journal is, and how far it reaches.
struct ChangeJournal {
  uint64_t id = 0;       // another one after it was made anew
  int64_t firstUsn = 0;  // byte offset of the first record that is still there
  int64_t nextUsn = 0;   // byte offset behind the last one
  int64_t lowestValidUsn = 0;
  uint64_t maximumBytes = 0, allocationDelta = 0;  // as its maker asked for
  NtfsStream records;                              // $J
};

// Empty if the volume has no journal, or one that cannot be read, or the reader was cancelled.
[[nodiscard]] std::optional<ChangeJournal> OpenChangeJournal(MftReader& reader);

// Which records to read.
struct JournalRange {
  int64_t startUsn = 0;  // 0: from the first one
  uint32_t reasonMask = 0xFFFF'FFFF;
  bool onlyOnClose = false;
};

// Fills `output`, which may have any size, with the position behind what was looked at, and then the
// records of versions 2 and 3 that are wanted, all in version 2. Error 1181 below the first record, 87
// behind the last, 234 if the position or the first record has no room, 995 once `cancelled` is set. A
// page of 4,096 bytes that cannot be read ends the block before it, and gives error 30 where no record
// stands before it in the block. A damaged record costs the rest of its page.
[[nodiscard]] VolumeDevice::Reply ReadChangeJournal(ByteSource& source, const ChangeJournal& journal,
                                                    const JournalRange& range,
                                                    std::span<std::byte> output,
                                                    const std::atomic<bool>& cancelled);

}  // namespace quilmark
