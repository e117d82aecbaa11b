// Changes of the data and dates of files, which the monitor's own read of the journal leaves out.
//
// The monitor reads the journal a second time, about once a second. It stops at the first change of a
// name that it has yet to apply itself. What the attribute cache has of a file that changed is stale
// from then on, and where sizes of a scan are held, the new size comes from the file's record.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "index/tables/volume_index.h"

namespace quilmark {

// Turns of the monitor from one look to the next.
inline constexpr uint32_t kTurnsALook = 3;

// One turn of the monitor's thread, indexLock not held; every third is a look at the journal up to
// `readTo`, the position to which the monitor has read. `scratch` has room for a block of the journal.
void WatchData(VolumeIndex& volume, VolumeDevice& device, int64_t readTo, std::span<std::byte> scratch,
               const std::atomic<bool>& wanted);

// The watch of a volume begins at `usn`. Called before the monitor starts.
void BeginDataWatch(VolumeIndex& volume, int64_t usn);

// What the journal says from a position on.
struct DataChanges {
  std::vector<uint64_t> frns;  // sorted, each once: files whose data or dates changed
  int64_t usn = 0;             // where the journal ends
};
// What the journal says from `usn` on. Empty if the journal is not `journalId`, has lost that position,
// or cannot be read, and at the end of the program. Any thread, no lock held: the call waits for the
// disk.
[[nodiscard]] std::optional<DataChanges> ReadDataChanges(VolumeDevice& device, uint64_t journalId,
                                                         int64_t usn);

// Marks the entries of these files stale, and returns how many were not so before. Takes attrLock. The
// cache need not be saved because of them: at the next start the journal tells of them again.
size_t MarkStale(VolumeIndex& volume, std::span<const uint64_t> frns);

// MarkStale for every entry of the volume.
size_t MarkAllStale(VolumeIndex& volume);

}  // namespace quilmark
