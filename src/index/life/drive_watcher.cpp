// Drives that come and go, by notice of the system and by looking.
#include <atomic>

#include "index/engine/volume_list.h"
#include "index/life/volume_life.h"
#include "platform/background.h"
#include "platform/clock.h"
#include "platform/detached_thread.h"
#include "platform/drives.h"

namespace quilmark {

namespace {

constexpr uint32_t kWatchMs = 2'000;
constexpr uint64_t kLeastBetweenSyncsMs = 501;

bool CanReadOneOf(const SearchEngine& engine, uint32_t unitMask) {
  for (const char16_t letter : LettersOf(unitMask)) {
    if (HasDriveRoot(letter) && AskVolumeInfo(engine, letter)) return true;
  }
  return false;
}

void WatchDrives(PostTarget window) {
  uint32_t known = LogicalDriveMask();
  while (!ShutdownRequested) {
    SleepMs(kWatchMs);
    if (!ShutdownRequested) known = WatchDrivesOnce(known, window);
  }
}

}  // namespace

bool TakeArrivalTurn(std::atomic<uint64_t>& lastMs, uint64_t nowMs) {
  uint64_t last = lastMs;
  if (last != 0 && nowMs - last < kLeastBetweenSyncsMs) return false;
  return lastMs.compare_exchange_strong(last, nowMs);
}

void SyncArrivedVolumesAsync(SearchEngine& engine, PostTarget window, uint32_t unitMask) {
  RunBackground("device_change_sync_volume", [&engine, window, unitMask] {
    if (!CanReadOneOf(engine, unitMask) || !TakeArrivalTurn(engine.lastArrivalSyncMs, TickMs())) return;
    SyncCurrentVolumesAsync(engine, window);
  });
}

uint32_t WatchDrivesOnce(uint32_t known, PostTarget window) {
  const uint32_t current = AnsweringDriveMask();
  if ((current & ~known) != 0) PostUnlessEnding(window, WM_INDEX_STATE, 1, 0);
  if ((known & ~current) != 0) PostUnlessEnding(window, WM_VOLUME_LOST, 0, 0);
  return current;
}

bool StartDriveWatcher(PostTarget window) {
  return StartDetachedThread("drive_watcher", [window] { WatchDrives(window); });
}

}  // namespace quilmark
