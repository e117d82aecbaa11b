// Everything that happens to the list of volumes, at once. Run under ThreadSanitizer as well.
#include <gtest/gtest.h>

#include <atomic>
#include <shared_mutex>
#include <thread>
#include <vector>

#include "index/engine/volume_list.h"
#include "index/follow/usn_monitor.h"
#include "index/life/volume_life.h"
#include "platform/background.h"
#include "platform/drives.h"
#include "support/ntfs_builder.h"
#include "support/scratch_folder.h"
#include "support/scripted_device.h"

namespace quilmark {
namespace {

// Reads the volumes as a search does.
void ReadAll(const SearchEngine& engine) {
  for (const VolumeIndex* const volume : CopyVolumes(engine)) {
    if (!volume->valid || volume->busy) continue;
    const std::shared_lock lock(volume->indexLock, std::try_to_lock);
    if (!lock) continue;
    for (uint32_t i = 0; i < volume->records.size(); ++i) {
      if (BuildPath(*volume, i).size() < 4) std::abort();
    }
  }
}

// True when `message` came among others.
bool WaitForMessage(PostQueue& window, uint32_t message) {
  while (const auto posted = window.Take(120'000)) {
    if (posted->message == message) return true;
  }
  return false;
}

TEST(VolumeLifeConcurrency, DrivesComeAndGoUnderReaders) {
  ScratchFolder folder;
  for (const char* const name : {"e", "f", "g"}) {
    for (int i = 0; i < 50; ++i) folder.MakeFile(std::string(name) + "/file" + std::to_string(i));
  }
  SearchEngine engine;
  PostQueue window;
  MapDrive(u'E', folder.PathOf(u"e"));
  MapDrive(u'F', folder.PathOf(u"f"));
  InitBackground(engine, window.Target());

  std::atomic<bool> running = true;
  std::vector<std::thread> threads;
  threads.emplace_back([&] {
    while (running) ReadAll(engine);
  });
  threads.emplace_back([&] {
    while (running) {
      MapDrive(u'G', folder.PathOf(u"g"));
      SyncCurrentVolumesAsync(engine, window.Target());
      UnmapDrive(u'G');
      RemoveUnavailableVolumes(engine);
    }
  });
  threads.emplace_back([&] {
    while (running) {
      ReleaseVolumesByMask(engine, 1u << 5);
      (void)HasNonNtfsVolume(engine);
      (void)WatchDrivesOnce(0, window.Target());
    }
  });
  for (int i = 0; i < 5; ++i) {
    RefreshAllNonNtfsAsync(engine, window.Target());
    ASSERT_TRUE(WaitForMessage(window, WM_NON_NTFS_REFRESHED));
  }
  running = false;
  for (std::thread& thread : threads) thread.join();
  ASSERT_TRUE(WaitForBackgroundJobs(120'000));

  SyncCurrentVolumesAsync(engine, window.Target());
  ASSERT_TRUE(WaitForBackgroundJobs(120'000));
  std::vector<std::u16string> usable;
  for (const VolumeIndex* const volume : CopyVolumes(engine)) {
    const std::shared_lock lock(volume->indexLock);
    EXPECT_EQ(FindBrokenInvariant(*volume), "");
    if (volume->valid && !volume->drive.starts_with(u"G")) usable.push_back(volume->drive);
  }
  EXPECT_EQ(usable, (std::vector<std::u16string>{u"E:", u"F:"}));
  UnmapDrive(u'E');
  UnmapDrive(u'F');
}

// The end of one stay of a stick against the beginning of its next: what is searched is followed.
TEST(VolumeLifeConcurrency, AStickThatIsBackAtOnceIsNotClosedByTheEndOfItsFormerStay) {
  monitorPauses = {.afterReadMs = 1, .afterErrorMs = 1};
  ScratchFolder folder;
  folder.MakeFile("n.img", NtfsVolumeBuilder().Image());
  ScriptedVolumes scripts;
  DeviceScript& script = scripts.Script(u"N:");
  SearchEngine engine;
  for (int stay = 0; stay < 40; ++stay) {
    MapDrive(u'N', folder.PathOf(u"n.img"));
    script.Queue(kFsctlQueryUsnJournal, {.output = JournalData(77, 64)});
    SyncCurrentVolumesAsync(engine, nullptr);
    ASSERT_TRUE(WaitForBackgroundJobs(60'000));  // the former stay is closed by now too
    const auto volumes = CopyVolumes(engine);
    ASSERT_EQ(volumes.size(), 1u);
    ASSERT_TRUE(volumes[0]->valid);
    ASSERT_TRUE(volumes[0]->follower.monitorRunning) << stay;
    ASSERT_EQ(script.OpenDevices(), 1) << stay;
    UnmapDrive(u'N');
    RemoveUnavailableVolumes(engine);
  }
  ASSERT_TRUE(WaitForBackgroundJobs(60'000));
  EXPECT_EQ(script.OpenDevices(), 0);
  monitorPauses = {};
}

}  // namespace
}  // namespace quilmark
