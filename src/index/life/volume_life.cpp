#include "index/life/volume_life.h"

#include <algorithm>
#include <functional>
#include <future>
#include <iterator>
#include <memory>
#include <mutex>
#include <vector>

#include "config/log.h"
#include "index/build/directory_walk.h"
#include "index/build/ntfs_volume.h"
#include "index/engine/volume_list.h"
#include "index/follow/usn_monitor.h"
#include "platform/background.h"
#include "platform/bounded_jobs.h"
#include "platform/clock.h"
#include "platform/drives.h"
#include "platform/format.h"
#include "platform/text.h"

namespace quilmark {

namespace {

// What the tasks of one start share.
struct Startup {
  SearchEngine& engine;
  PostTarget window;
  std::atomic<bool> firstReadyPosted = false;
};

void AddBuilt(Startup& startup, std::unique_ptr<VolumeIndex> volume) {
  AddReady(startup.engine, std::move(volume));
  if (!startup.firstReadyPosted.exchange(true)) PostUnlessEnding(startup.window, WM_INDEX_STATE, 0, 0);
}

// One bad drive, or cache, costs what it would have brought: an exception goes to the log. False then.
template <typename Work>
bool RunOrLog(Work work) {
  try {
    work();
    return true;
  } catch (const std::exception& error) {
    LogBackgroundThreadException(error.what());
  } catch (...) {
    LogBackgroundThreadException(nullptr);
  }
  return false;
}

void IndexDriveAtStart(Startup& startup, char16_t letter) {
  const auto info = AskVolumeInfo(startup.engine, letter);
  if (!info) return;
  const std::u16string drive = {letter, u':'};
  auto volume = NewVolume(startup.engine);
  const bool isBuilt = info->fileSystem == kNtfs ? BuildNtfsOrWalk(*volume, drive)
                                                 : BuildWalkVolume(*volume, drive, info->fileSystem);
  if (isBuilt) AddBuilt(startup, std::move(volume));
}

void IndexAllDrives(Startup& startup) {
  std::vector<std::future<void>> tasks;
  for (const char16_t letter : LettersOf(LogicalDriveMask())) {
    const auto index = [&startup, letter] { RunOrLog([&] { IndexDriveAtStart(startup, letter); }); };
    // Without a thread to be had the drive is indexed by this one.
    if (!RunOrLog([&] { tasks.push_back(std::async(std::launch::async, index)); })) index();
  }
  for (auto& task : tasks) task.get();
}

void LoadCaches(SearchEngine& engine) {
  const StartupHooks& hooks = engine.startupHooks;
  if (hooks.loadAttributeCache != nullptr) RunOrLog(hooks.loadAttributeCache);
  for (VolumeIndex* const volume : CopyVolumes(engine)) {
    const bool hasSizes = hooks.loadSizes != nullptr && IsNtfs(*volume);
    if (hasSizes) RunOrLog([&] { hooks.loadSizes(*volume); });
  }
  if (hooks.writeMissingAttributeCache != nullptr) {
    RunOrLog(hooks.writeMissingAttributeCache);
  }
}

void RunInitBackground(SearchEngine& engine, PostTarget window) {
  const uint64_t start = TickMs();
  Startup startup{.engine = engine, .window = window};
  IndexAllDrives(startup);
  if (ShutdownRequested) return;
  size_t count = 0;
  {
    const std::scoped_lock lock(engine.volumesMutex);
    SortByDrive(engine);
    count = engine.volumes.size();
    engine.ready = count != 0;
    engine.awaitsCaches = count == 0;
  }
  if (engine.ready && !ShutdownRequested) LoadCaches(engine);
  LogPerfMetric(
      FormatText(u"startup index_ms=%llu volume_count=%llu", TickMs() - start, uint64_t{count}));
  if (startup.firstReadyPosted) {
    PostUnlessEnding(window, WM_VOLUMES_SYNCED, 0, 0);
  } else {
    PostUnlessEnding(window, WM_INDEX_STATE, engine.ready ? 0 : 1, 0);
  }
}

VolumeIndex* FindVolume(SearchEngine& engine, std::u16string_view drive) {
  const std::scoped_lock lock(engine.volumesMutex);
  return FindVolumeLocked(engine, drive);
}

bool BuildByName(VolumeIndex& volume, std::u16string_view drive, std::u16string_view fileSystem) {
  return EqualNoCase(fileSystem, kNtfs) ? BuildNtfsOrWalk(volume, drive)
                                        : BuildWalkVolume(volume, drive, fileSystem);
}

void SyncDrive(SearchEngine& engine, char16_t letter) {
  const auto info = AskVolumeInfo(engine, letter);
  // A drive that does not tell, as some of a network, is walked.
  const std::u16string fileSystem = info ? info->fileSystem : std::u16string();
  const std::u16string drive = {letter, u':'};
  if (VolumeIndex* const known = FindVolume(engine, drive)) {
    // Whoever has it for himself lets nobody ask; its notice tells when he is done.
    if (!info && known->follower.HasNotice()) return;
    const bool isToBeBuilt = !known->valid && CloseForBuild(engine, *known);
    if (isToBeBuilt) BuildByName(*known, known->drive, fileSystem);
    return;
  }
  auto volume = NewVolume(engine);
  if (BuildByName(*volume, drive, fileSystem)) AddUnlessPresent(engine, std::move(volume));
}

void SyncDrives(SearchEngine& engine) {
  for (const char16_t letter : LettersOf(LogicalDriveMask())) {
    if (ShutdownRequested) break;
    RunOrLog([&] { SyncDrive(engine, letter); });
  }
}

void EndSync(SearchEngine& engine, PostTarget window) {
  bool wasReady = false, isReady = false;
  {
    const std::scoped_lock lock(engine.volumesMutex);
    SortByDrive(engine);
    wasReady = engine.ready;
    engine.ready = isReady = std::any_of(engine.volumes.begin(), engine.volumes.end(),
                                         [](const auto& volume) { return volume->valid.load(); });
  }
  // The first volume may come long after the start; what waits for one starts now.
  if (isReady && !wasReady) PostUnlessEnding(window, WM_INDEX_STATE, 0, 0);
  if (isReady && !ShutdownRequested && engine.awaitsCaches.exchange(false)) LoadCaches(engine);
  PostUnlessEnding(window, WM_VOLUMES_SYNCED, 0, 0);
}

// A drive that arrived while the letters were gone through is asked for by a request that found a sync
// running.
void RunSync(SearchEngine& engine, PostTarget window) {
  engine.syncing.TakeAsked();  // whoever asked before the first letter is served by this pass
  do {
    SyncDrives(engine);
  } while (engine.syncing.TakeAsked() && !ShutdownRequested);
  EndSync(engine, window);
}

// Volumes that were taken out of the search under volumesMutex, and what is done behind it.
struct TakenOut {
  std::vector<VolumeIndex*> volumes;
  std::vector<std::shared_ptr<const DeviceNotice>> notices;  // to be ended behind the lock

  TakenOut() {
    volumes.reserve(kMostDrives);
    notices.reserve(kMostDrives);
  }
};

// Takes a volume whose letter is gone out of the search; what comes under it next is another volume, so
// its notice ends. Kept in `out` if it was searched until now, or was lost or released before its letter
// went and nobody was told of it.
void TakeOutGone(VolumeIndex& volume, TakenOut& out) {
  volume.follower.takenOut = true;
  out.notices.push_back(volume.follower.ReplaceNotice(nullptr));
  const bool wasTold = volume.follower.goneTold.exchange(true);
  if (volume.valid.exchange(false) || !wasTold) out.volumes.push_back(&volume);
}

// Takes a volume out of the search whose letter may stay for a while. Kept in `out` if it was in it, or
// is lost and not yet closed, and once more when its letter is gone.
void TakeOutReleased(VolumeIndex& volume, bool isGone, TakenOut& out) {
  const bool wasOut = volume.follower.takenOut.exchange(true);
  if (isGone) out.notices.push_back(volume.follower.ReplaceNotice(nullptr));
  const bool wasTold = !isGone || volume.follower.goneTold.exchange(true);
  if (volume.valid.exchange(false) || !wasOut || !wasTold) out.volumes.push_back(&volume);
}

// The volume counts as being closed from before the job until `work` has ended.
std::function<void()> ClosingJob(SearchEngine& engine, VolumeIndex& volume, void (*work)(VolumeIndex&)) {
  ++volume.follower.closes;
  return [&engine, &volume, work] {
    RunOrLog([&] { work(volume); });
    --volume.follower.closes;
    const bool isAwaited = volume.follower.awaitsClose.exchange(false);
    if (isAwaited && !ShutdownRequested) SyncCurrentVolumesAsync(engine, engine.window);
  };
}

// On a job each. A disk that does not answer any more holds up its own job, and nobody else.
void CloseWithin(SearchEngine& engine, const std::vector<VolumeIndex*>& volumes,
                 void (*work)(VolumeIndex&)) {
  std::vector<std::function<void()>> works;
  for (VolumeIndex* const volume : volumes) works.push_back(ClosingJob(engine, *volume, work));
  RunWithin("close_volume", std::move(works), engine.closeLimits.mostMs);
}

// volumesMutex held. Null for a number that no volume has.
VolumeIndex* FindNoticedLocked(const SearchEngine& engine, uintptr_t id) {
  for (const auto& volume : engine.volumes) {
    if (volume->follower.HasNotice(id)) return volume.get();
  }
  return nullptr;
}

}  // namespace

bool BuildNtfsOrWalk(VolumeIndex& volume, std::u16string_view drive) {
  const std::u16string ownDrive(drive);  // it may be the volume's, which the build sets anew
  const NtfsBuild build = TryBuildNtfsVolume(volume, ownDrive);
  if (build != NtfsBuild::kNoJournal) return build == NtfsBuild::kBuilt;
  return BuildWalkVolume(volume, ownDrive, kNtfsWithoutJournal);
}

void InitBackground(SearchEngine& engine, PostTarget window) {
  engine.window = window;
  RunBackground("init_background", [&engine, window] { RunInitBackground(engine, window); });
}

void SyncCurrentVolumesAsync(SearchEngine& engine, PostTarget window) {
  engine.syncing.Start(
      "sync_current_volumes", [&engine, window] { RunSync(engine, window); },
      [&engine, window] {
        if (!ShutdownRequested) SyncCurrentVolumesAsync(engine, window);
      });
}

bool CloseForBuild(SearchEngine& engine, VolumeIndex& volume) {
  if (volume.follower.closes == 0 && volume.follower.IsOpen())
    CloseWithin(engine, {&volume}, CloseVolume);
  if (volume.follower.closes == 0) return true;
  volume.follower.awaitsClose = true;
  // One that ended before it could see that does not sync.
  return volume.follower.closes == 0 && volume.follower.awaitsClose.exchange(false);
}

bool RemoveUnavailableVolumes(SearchEngine& engine) {
  TakenOut gone;
  {
    const std::scoped_lock lock(engine.volumesMutex);
    const uint32_t mask = LogicalDriveMask();
    for (const auto& volume : engine.volumes) {
      if ((BitOfDrive(*volume) & mask) == 0) TakeOutGone(*volume, gone);
    }
  }
  gone.notices.clear();
  if (gone.volumes.empty()) return false;
  std::vector<std::function<void()>> closes;
  // A letter may be back, and a sync have built its volume again.
  for (VolumeIndex* const volume : gone.volumes) {
    closes.push_back(ClosingJob(engine, *volume, CloseTakenOut));
  }
  RunWithin("remove_unavailable_volumes", std::move(closes), 0);
  return true;
}

bool ReleaseVolumesByMask(SearchEngine& engine, uint32_t unitMask) {
  if (unitMask == 0) return false;
  TakenOut released;
  {
    const std::scoped_lock lock(engine.volumesMutex);
    const uint32_t mask = LogicalDriveMask();
    for (const auto& volume : engine.volumes) {
      const uint32_t bit = BitOfDrive(*volume);
      if ((bit & unitMask) != 0) TakeOutReleased(*volume, (bit & mask) == 0, released);
    }
  }
  released.notices.clear();
  CloseWithin(engine, released.volumes, CloseTakenOut);
  return !released.volumes.empty();
}

bool ReleaseNoticedVolume(SearchEngine& engine, uintptr_t id) {
  TakenOut released;
  {
    const std::scoped_lock lock(engine.volumesMutex);
    VolumeIndex* const volume = FindNoticedLocked(engine, id);
    if (volume == nullptr) return false;
    const bool isGone = (BitOfDrive(*volume) & LogicalDriveMask()) == 0;
    TakeOutReleased(*volume, isGone, released);
  }
  released.notices.clear();
  CloseWithin(engine, released.volumes, CloseTakenOut);
  return !released.volumes.empty();
}

void ReopenNoticedVolume(SearchEngine& engine, PostTarget window, uintptr_t id) {
  {
    const std::scoped_lock lock(engine.volumesMutex);
    const VolumeIndex* const volume = FindNoticedLocked(engine, id);
    if (volume == nullptr || volume->valid) return;
  }
  SyncCurrentVolumesAsync(engine, window);
}

void DropAllVolumes(SearchEngine& engine) {
  std::vector<VolumeIndex*> dropped;
  dropped.reserve(kMostDrives);
  const std::scoped_lock lock(engine.volumesMutex);
  for (const auto& volume : engine.volumes) dropped.push_back(volume.get());
  CloseWithin(engine, dropped, StopMonitor);
  std::move(engine.volumes.begin(), engine.volumes.end(), std::back_inserter(engine.dropped));
  engine.volumes.clear();
}

}  // namespace quilmark
