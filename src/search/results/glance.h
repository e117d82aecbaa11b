// Locks for whoever shows rows, and must not wait for those who write them.
#pragma once

#include <shared_mutex>

#include "index/tables/volume_index.h"

namespace quilmark {

// False for a volume that is lost or being built: every search leaves it out, and tells nobody.
inline bool IsSearchable(const VolumeIndex& volume) { return volume.valid && !volume.busy; }

// The volume's lock, shared, for the interface thread. Waits for a writer for 5 ms, but not within 50 ms
// after the thread waited in vain, for whichever volume and lock of this header. Not held where that did
// not do, nor for a volume that is not searchable, also where its lock is free.
[[nodiscard]] std::shared_lock<OrderedLock> LockForGlance(VolumeIndex& volume);

// The same for the lock of its attributes.
[[nodiscard]] std::shared_lock<OrderedLock> LockAttrsForGlance(const VolumeIndex& volume);

}  // namespace quilmark
