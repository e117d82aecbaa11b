// What happened to the files of the attribute cache while the program did not run.
#pragma once

#include <cstdint>
#include <vector>

#include "search/attributes/attr_cache_file.h"
#include "search/attributes/attr_positions.h"

namespace quilmark {

// A volume whose journal was gone through up to `usn`.
struct AttrReplay {
  VolumeIndex* volume = nullptr;
  int64_t usn = 0;
};

// Where the journal of a volume can tell from: empty without an open device, and while a build runs.
[[nodiscard]] std::optional<AttrPosition> PositionOf(const VolumeIndex& volume);

// Takes out of `cached`, which goes to `volume`, the files that changed since `positions` were saved,
// and all of them where the volume's journal is another one by now, has lost that position or cannot be
// read. Without a position of a volume that has a journal they are stale. Empty if there is nothing more
// to be asked.
[[nodiscard]] std::optional<AttrReplay> LeaveOutChanged(VolumeIndex& volume, CachedVolume& cached,
                                                        const std::vector<AttrPosition>& positions);

// The same once more when the volume has the entries, for what changed since LeaveOutChanged: from then
// on the monitor finds them.
void MarkChangedSince(const AttrReplay& replay);

}  // namespace quilmark
