// The one object that owns every volume, and what is installed for all of them.
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "index/tables/volume_index.h"
#include "platform/background.h"
#include "platform/drives.h"
#include "platform/locks.h"
#include "platform/shutdown.h"
#include "platform/window_post.h"

namespace quilmark {

// One a letter. Where so many are reserved before volumesMutex is taken, nothing is allocated under it.
inline constexpr size_t kMostDrives = 26;

// What higher layers do at the end of start-up, or when the first volume is built after that; null
// members are left out.
struct StartupHooks {
  void (*loadAttributeCache)() = nullptr;
  void (*loadSizes)(VolumeIndex& volume) = nullptr;  // of each NTFS volume
  void (*writeMissingAttributeCache)() = nullptr;
};

// How long a release of volumes, and the end of the program, wait for monitors and devices. What takes
// longer ends on its job.
struct CloseLimits {
  uint32_t mostMs = 2'000;
};

// What a drive says of itself; empty where it does not. Any thread.
using VolumeInfoReader = std::optional<VolumeInfo> (*)(char16_t letter);

// All drives of the program. Lives longer than every job and monitor: the program's own is never
// destroyed, and a test waits for its jobs.
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
  SingleJob refreshing;                      // the manual refresh of drives without a journal
  std::atomic<PostTarget> window = nullptr;  // the main window, once it exists

  // Installed by the program before InitBackground, and not changed afterwards.
  StartupHooks startupHooks;
  void (*attributesBecameStale)() = nullptr;  // of VolumeListeners
  CloseLimits closeLimits;
  std::atomic<VolumeInfoReader> readVolumeInfo = ReadVolumeInfo;  // tests install another

  std::atomic<uint64_t> lastArrivalSyncMs = 0;  // tick of the last sync that an arrival began; 0: none
};

// The program's engine, which lives as long as the process. Any thread.
SearchEngine& Engine();

// The volumes as they are now, sorted by drive once the start is over. A volume lives on while the
// result of a search may name it. Takes volumesMutex.
[[nodiscard]] std::vector<VolumeIndex*> CopyVolumes(const SearchEngine& engine);

// A new volume with the engine's listeners, to be built and then added to the list.
[[nodiscard]] std::unique_ptr<VolumeIndex> NewVolume(const SearchEngine& engine);

// Adds a built volume, keeps the list sorted by drive and sets `ready`. Returns the volume, which the
// engine owns. Takes volumesMutex.
VolumeIndex* AddVolume(SearchEngine& engine, std::unique_ptr<VolumeIndex> volume);

// One hit. Carries no text: path, name and attributes are looked up when they are needed. A volume that
// was built again, or dropped, may have fewer records than the index says.
struct MatchItem {
  VolumeIndex* volume = nullptr;
  uint32_t index = 0;

  bool operator==(const MatchItem&) const = default;
};
static_assert(sizeof(MatchItem) == 16, "a result may hold millions");

}  // namespace quilmark
