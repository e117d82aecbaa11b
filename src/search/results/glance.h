// Locks for whoever shows rows, and must not wait for those who write them.
#pragma once

#include <shared_mutex>

#include "index/tables/volume_index.h"

namespace quilmark {

// False for a volume that is lost or being built: every search leaves it out, and tells nobody.
inline bool IsSearchable(const VolumeIndex& volume) { return volume.valid && !volume.busy; }

// The volume's lock, shared, for the interface thread: waits for a writer for 5 ms, but not
// within 50 ms after a wait in vain, and not at all for a volume that is being built. Not held where
// that did not do.
[[nodiscard]] std::shared_lock<OrderedLock> LockForGlance(VolumeIndex& volume);

// The same for the lock of its attributes.
[[nodiscard]] std::shared_lock<OrderedLock> LockAttrsForGlance(const VolumeIndex& volume);

}  // namespace quilmark
