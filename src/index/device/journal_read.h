// One read of a volume's change journal.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "platform/volume_device.h"

namespace quilmark {

// Takes one answer of the journal, and the largest FILE record.
using JournalBuffer = ControlBuffer<65'536>;

// The first form of READ_USN_JOURNAL_DATA (winioctl.h). Nothing to wait for: the call returns at once.
struct ReadUsnJournalData {
  int64_t startUsn = 0;
  uint32_t reasonMask = 0;
  uint32_t returnOnlyOnClose = 0;
  uint64_t timeout = 0;
  uint64_t bytesToWaitFor = 0;
  uint64_t usnJournalId = 0;
};
static_assert(sizeof(ReadUsnJournalData) == 40);

// Reads the journal from `from.startUsn` on into `block`, which has room for 65,536 bytes: eight bytes
// of position, then USN records. The reply has the error of the device, and error 1181 where the journal
// no longer reaches back that far. No lock is held: the call waits for the disk.
[[nodiscard]] inline VolumeDevice::Reply ReadJournalFrom(VolumeDevice& device,
                                                         const ReadUsnJournalData& from,
                                                         std::span<std::byte> block) {
  return device.Control(kFsctlReadUsnJournal, std::as_bytes(std::span(&from, 1)), block);
}

}  // namespace quilmark
