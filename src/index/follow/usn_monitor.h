// Follows the change journal of one volume and edits its index in place.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <span>

#include "index/tables/volume_index.h"

namespace quilmark {

// Thread body: polls the journal from volume.nextUsn while `wanted` is set, with a pause
// after every read. Ends quietly, the volume searchable as it stands, when it is stopped or the journal
// is gone; ends as lost, the volume not valid and WM_VOLUME_LOST posted, when the device is.
void RunUsnMonitor(VolumeIndex& volume, std::atomic<bool>& wanted);

// Starts the monitor of a volume whose device is open and whose build holds indexLock; no effect where
// one has not been joined yet. std::system_error where the system gives no thread.
void StartMonitor(VolumeIndex& volume);

// Ends and joins the monitor, which may be in the middle of a block or a read. Never from the monitor's
// own thread.
void StopMonitor(VolumeIndex& volume);

// Applies one block of FSCTL_READ_USN_JOURNAL under indexLock and moves nextUsn to the position that
// opens it, then lets go and tidies the names a step further. A malformed record ends the block. A block
// of eight bytes or fewer changes nothing.
void ApplyJournalBlock(VolumeIndex& volume, std::span<const std::byte> block);

// The attributes and sizes of the file are not known any more. indexLock held.
void ForgetFileAttributes(VolumeIndex& volume, uint64_t frn);

// How long a monitor rests, in milliseconds.
struct MonitorPauses {
  uint32_t afterReadMs = 300;
  uint32_t afterErrorMs = 1'000;
};
extern MonitorPauses monitorPauses;  // only tests change them, while no monitor runs

}  // namespace quilmark
