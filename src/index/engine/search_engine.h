// The one object that owns every volume, and the process-wide flags of the index.
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <vector>

#include "index/tables/volume_index.h"
#include "platform/background.h"
#include "platform/locks.h"
#include "platform/shutdown.h"
#include "platform/window_post.h"

namespace quilmark {

inline constexpr uint32_t WM_VOLUME_LOST =
    1032;  // a drive letter vanished, or a monitor lost its device

struct SearchEngine {
  std::vector<std::unique_ptr<VolumeIndex>> volumes;  // guarded by volumesMutex; sorted by drive
  // Volumes of drives that are gone, kept for results that still name them; guarded by volumesMutex.
  std::vector<std::unique_ptr<VolumeIndex>> dropped;
  mutable OrderedLock volumesMutex{LockRank::kVolumeList, "volumesMutex"};
  std::atomic<bool> ready = false;  // a volume is usable
  // The start has ended with no volume that could take what the caches hold; the first that is built
  // makes up for it.
  std::atomic<bool> awaitsCaches = false;
  SingleJob syncing;                         // brings the volumes in line with the drives
  SingleJob prewarming;                      // fills the attribute cache
  std::atomic<PostTarget> window = nullptr;  // the main window, once it exists
};

// Lives as long as the process.
SearchEngine& Engine();

// Goes up whenever a cached attribute is dropped or replaced.
extern std::atomic<uint64_t> AttrCacheGeneration;

// The volumes as they are now. A volume lives on while the result of a search may name it.
std::vector<VolumeIndex*> CopyVolumes(const SearchEngine& engine);

// Adds a built volume, keeps the array sorted by drive and sets `ready`.
VolumeIndex* AddVolume(SearchEngine& engine, std::unique_ptr<VolumeIndex> volume);

// One hit. Carries no text: path, name and attributes are looked up when they are needed. A volume that
// was built again, or dropped, may have fewer records than the index says.
struct MatchItem {
  VolumeIndex* volume = nullptr;
  uint32_t index = 0;

  bool operator==(const MatchItem&) const = default;
};

}  // namespace quilmark
