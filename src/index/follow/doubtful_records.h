// Records of which one record of the journal says both that they came and that they went.
//
// Such a record is taken for alive. The volume itself knows, and the monitor asks it between two blocks,
// without indexLock.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "index/tables/volume_index.h"

namespace quilmark {

// Turns of the monitor in which a file in doubt is asked for: the last is over within two seconds.
inline constexpr uint8_t kAsksInDoubt = 6;

// Asks once for each file in doubt, and returns those that are gone. One that is there keeps the rest of
// its turns, since the journal may be ahead of the FILE record. Ends early once `wanted` is clear.
// `scratch` has room for a block of the journal. The monitor's thread, indexLock not held.
[[nodiscard]] std::vector<uint64_t> AskWhatIsGone(VolumeIndex& volume, VolumeDevice& device,
                                                  std::span<std::byte> scratch,
                                                  const std::atomic<bool>& wanted);

}  // namespace quilmark
