// The refresh by hand of volumes that no journal keeps up to date.
#include <algorithm>
#include <mutex>
#include <optional>
#include <shared_mutex>
#include <string>
#include <vector>

#include "config/translate.h"
#include "index/build/directory_walk.h"
#include "index/engine/volume_list.h"
#include "index/life/volume_life.h"
#include "platform/background.h"
#include "platform/clock.h"
#include "platform/debug_output.h"
#include "platform/drives.h"
#include "platform/format.h"
#include "platform/text.h"
#include "platform/utf.h"

namespace quilmark {

namespace {

constexpr std::string_view kLogPrefix = "[Quilmark][ManualRefresh]";

constexpr uint32_t kSyncStepMs = 100;
constexpr int kMostSyncSteps = 30;

struct WalkedDrive {
  std::u16string drive;
  std::u16string fileSystem;
};

struct RefreshCounts {
  uint64_t rebuilt = 0;
  int64_t failed = 0;
};

void SyncFirst(SearchEngine& engine, PostTarget window) {
  SyncCurrentVolumesAsync(engine, window);
  for (int step = 0; step < kMostSyncSteps && engine.syncing.IsRunning() && !ShutdownRequested; ++step) {
    SleepMs(kSyncStepMs);
  }
}

// An NTFS volume without a journal was walked.
bool IsWithoutJournal(const SearchEngine& engine, std::u16string_view drive) {
  const std::scoped_lock lock(engine.volumesMutex);
  const VolumeIndex* const known = FindVolumeLocked(engine, drive);
  return known != nullptr && HasFileSystem(*known, kNtfsWithoutJournal);
}

std::vector<WalkedDrive> WalkedDrives(const SearchEngine& engine) {
  std::vector<WalkedDrive> drives;
  for (const char16_t letter : LettersOf(LogicalDriveMask())) {
    const auto info = AskVolumeInfo(engine, letter);
    if (!info) continue;
    WalkedDrive walked{{letter, u':'}, info->fileSystem};
    if (info->fileSystem == kNtfs) {
      if (!IsWithoutJournal(engine, walked.drive)) continue;
      walked.fileSystem = kNtfsWithoutJournal;
    }
    drives.push_back(std::move(walked));
  }
  return drives;
}

// Builds the drive's volume again, or for the first time; the count of its records, or empty.
std::optional<uint32_t> RebuildWalked(SearchEngine& engine, const WalkedDrive& walked) {
  VolumeIndex* known = nullptr;
  {
    const std::scoped_lock lock(engine.volumesMutex);
    known = FindVolumeLocked(engine, walked.drive);
  }
  if (known != nullptr) {
    if (!CloseForBuild(engine, *known)) return std::nullopt;
    if (!BuildWalkVolume(*known, known->drive, walked.fileSystem)) return std::nullopt;
    const std::shared_lock lock(known->indexLock);
    return known->records.size();
  }
  auto volume = NewVolume(engine);
  if (!BuildWalkVolume(*volume, walked.drive, walked.fileSystem)) return std::nullopt;
  const uint32_t count = volume->records.size();
  AddUnlessPresent(engine, std::move(volume));
  return count;
}

RefreshCounts RefreshDrives(SearchEngine& engine, const std::vector<WalkedDrive>& drives,
                            std::u16string& log) {
  RefreshCounts counts;
  for (const WalkedDrive& walked : drives) {
    if (ShutdownRequested) break;
    const uint32_t bit = uint32_t{1} << (walked.drive[0] - u'A');
    if ((LogicalDriveMask() & bit) == 0) {
      log += walked.drive + u":SKIP ";
      continue;
    }
    const auto count = RebuildWalked(engine, walked);
    if (count) {
      ++counts.rebuilt;
      log += FormatText(u"%s:%s(%u) ", walked.drive, TranslateOr(u"Log_ResultOk", u"OK"), *count);
    } else {
      ++counts.failed;
      log += FormatText(u"%s:%s ", walked.drive, TranslateOr(u"Log_ResultFail", u"FAIL"));
    }
  }
  return counts;
}

// Frees what the volumes dropped by earlier refreshes hold; the objects stay, since results name them by
// address.
void EmptyDropped(SearchEngine& engine) {
  std::vector<VolumeIndex*> dropped;
  {
    const std::scoped_lock lock(engine.volumesMutex);
    for (const auto& volume : engine.dropped) dropped.push_back(volume.get());
  }
  for (VolumeIndex* const volume : dropped) {
    const std::scoped_lock lock(volume->indexLock);
    ResetVolumeTables(*volume);
  }
}

// The only place where a volume leaves the list. Its tables stay until the next refresh: searches that
// run and results on the screen still name its records.
void DropVanished(SearchEngine& engine, const std::vector<WalkedDrive>& drives) {
  const std::scoped_lock lock(engine.volumesMutex);
  const auto isListed = [&](const VolumeIndex& volume) {
    return std::any_of(drives.begin(), drives.end(), [&](const WalkedDrive& walked) {
      return EqualNoCase(walked.drive, volume.drive);
    });
  };
  // As one with a journal, an NTFS volume without one stays while another program lets nobody ask for
  // it.
  const auto isLocked = [mask = LogicalDriveMask()](const VolumeIndex& volume) {
    return HasFileSystem(volume, kNtfsWithoutJournal) && (BitOfDrive(volume) & mask) != 0;
  };
  const auto gone = std::stable_partition(
      engine.volumes.begin(), engine.volumes.end(),
      [&](const auto& volume) { return IsNtfs(*volume) || isListed(*volume) || isLocked(*volume); });
  for (auto volume = gone; volume != engine.volumes.end(); ++volume) {
    (*volume)->valid = false;
    engine.dropped.push_back(std::move(*volume));
  }
  engine.volumes.erase(gone, engine.volumes.end());
  SortByDrive(engine);
}

void RunRefresh(SearchEngine& engine, PostTarget window) {
  SyncFirst(engine, window);
  const auto drives = WalkedDrives(engine);
  std::u16string log =
      drives.empty()
          ? TranslateOr(u"Log_NoNonNtfsForRefresh", u"No non-NTFS volumes detected for manual refresh.")
          : TranslateOr(u"Log_RefreshNonNtfsPrefix", u"Refresh the index of non-NTFS drives.");
  for (const WalkedDrive& walked : drives) log += walked.drive + u"(" + walked.fileSystem + u") ";
  const RefreshCounts counts = RefreshDrives(engine, drives, log);
  EmptyDropped(engine);
  DropVanished(engine, drives);
  WriteDebugOutput(std::string(kLogPrefix) + ToUtf8(log) + "\n");
  PostUnlessEnding(window, WM_NON_NTFS_REFRESHED, counts.rebuilt, counts.failed);
}

}  // namespace

bool HasNonNtfsVolume(SearchEngine& engine) {
  const std::scoped_lock lock(engine.volumesMutex);
  const uint32_t mask = LogicalDriveMask();
  for (const auto& volume : engine.volumes) {
    if (!volume->valid) continue;
    if ((BitOfDrive(*volume) & mask) == 0) {
      volume->valid = false;
    } else if (!IsNtfs(*volume)) {
      return true;
    }
  }
  return false;
}

void RefreshAllNonNtfsAsync(SearchEngine& engine, PostTarget window) {
  engine.refreshing.Start(
      "refresh_non_ntfs", [&engine, window] { RunRefresh(engine, window); },
      [&engine, window] { RefreshAllNonNtfsAsync(engine, window); });
}

}  // namespace quilmark
