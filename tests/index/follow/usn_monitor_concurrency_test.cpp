// Closing against building. Run under ThreadSanitizer as well.
#include <gtest/gtest.h>

#include <limits>
#include <new>
#include <thread>

#include "index/build/ntfs_volume.h"
#include "index/follow/usn_monitor.h"
#include "support/scripted_device.h"

namespace quilmark {
namespace {

constexpr uint64_t kRoot = 5;

// Closing, stopping and building at once leave a volume that is closed or followed, never both.
TEST(UsnMonitorConcurrency, ClosingAndBuildingAtOnceEndWhole) {
  monitorPauses = {.afterReadMs = 0, .afterErrorMs = 0};
  ScriptedVolumes scripts;
  DeviceScript& script = scripts.Script(u"N:");
  VolumeIndex volume;
  std::atomic<bool> building = true;
  std::thread closer([&] {
    while (building) CloseVolume(volume);
  });
  for (int i = 0; i < 20; ++i) {
    script.Queue(kFsctlQueryUsnJournal, {.output = JournalData(77, 64)});
    script.Queue(kFsctlEnumUsnData, {.output = Bytes(8)});
    script.Queue(kFsctlEnumUsnData, {.output = UsnBlockBuilder(1).Record(41, kRoot, u"a.txt")});
    (void)BuildNtfsVolume(volume, u"N:");  // closed at any moment, it may fail
  }
  building = false;
  closer.join();

  CloseVolume(volume);

  EXPECT_EQ(script.OpenDevices(), 0);
  EXPECT_FALSE(volume.follower.monitorRunning);
  monitorPauses = {};
}

// The parser fails while the reader has blocks without an end.
TEST(EnumerationConcurrency, AParserThatFailsEndsTheReader) {
  ScriptedVolumes scripts;
  DeviceScript& script = scripts.Script(u"N:");
  VolumeIndex volume;
  volume.names.chunkCapacity = std::numeric_limits<size_t>::max() / 4;
  script.RepeatBlock(UsnBlockBuilder(1).Record(41, kRoot, u"a.txt"));
  for (int i = 0; i < 20; ++i) {
    script.Queue(kFsctlQueryUsnJournal, {.output = JournalData(77, 64)});
    EXPECT_THROW((void)BuildNtfsVolume(volume, u"N:"), std::bad_alloc);
  }
  EXPECT_EQ(script.OpenDevices(), 0);
}

TEST(UsnMonitorConcurrency, TwoStopsOfAReadThatMissesItsCancellationsEnd) {
  ScriptedVolumes scripts;
  DeviceScript& script = scripts.Script(u"N:");
  script.HoldJournalReads(true);
  script.MissCancels(3);
  script.Queue(kFsctlQueryUsnJournal, {.output = JournalData(77, 64)});
  VolumeIndex volume;
  ASSERT_TRUE(BuildNtfsVolume(volume, u"N:"));
  ASSERT_TRUE(script.WaitForAsked(kFsctlReadUsnJournal, 1));

  std::thread other([&] { StopMonitor(volume); });
  CloseVolume(volume);
  other.join();

  EXPECT_EQ(script.OpenDevices(), 0);
  EXPECT_TRUE(volume.valid);
}

}  // namespace
}  // namespace quilmark
