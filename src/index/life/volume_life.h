// Which volumes exist, and when: start-up, drives that come and go, refresh by hand.
//
// The long work runs on jobs of RunBackground and reports by messages to `window`. volumesMutex is never
// held across a build.
#pragma once

#include <cstdint>
#include <string_view>

#include "index/engine/search_engine.h"
#include "platform/window_post.h"

namespace quilmark {

inline constexpr uint32_t WM_INDEX_STATE = 1025;  // first: 0 a volume is ready, 1 something is missing
inline constexpr uint32_t WM_NON_NTFS_REFRESHED = 1031;  // first: volumes rebuilt, second: failures
inline constexpr uint32_t WM_VOLUMES_SYNCED = 1033;      // the set of volumes changed or settled

// How long the window waits before it syncs again while no volume is ready.
inline constexpr uint32_t kSyncRetryMs = 5'000;

// Builds an NTFS volume from its journal, or, where it can have none, by a walk under the name of
// kNtfsWithoutJournal. False, and the volume not valid, if neither works, or if its device does not
// open. A background thread's work.
[[nodiscard]] bool BuildNtfsOrWalk(VolumeIndex& volume, std::u16string_view drive);

// Job "init_background": indexes every drive at once. Posts WM_INDEX_STATE as soon as the first is
// searchable and WM_VOLUMES_SYNCED when all are.
void InitBackground(SearchEngine& engine, PostTarget window);

// Job "sync_current_volumes": builds what is new or not valid, one drive after another, and posts
// WM_VOLUMES_SYNCED. One that runs already goes through the letters once more before it ends.
void SyncCurrentVolumesAsync(SearchEngine& engine, PostTarget window);

// Takes volumes whose letter is gone out of the search and closes them on the job
// "remove_unavailable_volumes". True if there was one.
bool RemoveUnavailableVolumes(SearchEngine& engine);

// Takes the volumes of the letters (bit 0: A:) out of the search and closes their devices before it
// returns, if they can be closed within the engine's closeLimits. True if there was one.
bool ReleaseVolumesByMask(SearchEngine& engine, uint32_t unitMask);

// Others want the volume whose notice has the number `id` for themselves: takes it out of the search and
// closes its device within closeLimits. True if that was to be done, false where no volume has that
// number.
bool ReleaseNoticedVolume(SearchEngine& engine, uintptr_t id);

// They are done with that volume, or have failed: builds it again on the job "sync_current_volumes"
// unless it is valid. No effect where no volume has that number.
void ReopenNoticedVolume(SearchEngine& engine, PostTarget window, uintptr_t id);

// Stops and joins every monitor, within closeLimits, and empties the list, all with volumesMutex held.
// The volumes live on as dropped ones, since detached jobs may be in the middle of them. For the end of
// the program.
void DropAllVolumes(SearchEngine& engine);

// Whether there is a volume that only a refresh by hand brings up to date. A volume whose letter is gone
// stops being valid on the way. Takes volumesMutex.
[[nodiscard]] bool HasNonNtfsVolume(SearchEngine& engine);

// Job "refresh_non_ntfs": walks every such drive again, drops volumes of drives that are gone, posts
// WM_NON_NTFS_REFRESHED. Asked for while it runs, once or more, it runs once again behind itself.
void RefreshAllNonNtfsAsync(SearchEngine& engine, PostTarget window);

// Job "device_change_sync_volume", for the arrival of the letters in `unitMask`: syncs if one of them
// can be read and the last such sync began more than 500 ms ago.
void SyncArrivedVolumesAsync(SearchEngine& engine, PostTarget window, uint32_t unitMask);

// One look of the drive watcher: compares the letters that answer now with `known`, posts WM_INDEX_STATE
// for a new one and WM_VOLUME_LOST for one that is gone, and returns the letters of now (bit 0: A).
[[nodiscard]] uint32_t WatchDrivesOnce(uint32_t known, PostTarget window);

// Thread that looks every 2 seconds until shutdown. False if it could not be started.
[[nodiscard]] bool StartDriveWatcher(PostTarget window);

}  // namespace quilmark
