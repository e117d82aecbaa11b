#include "index/life/volume_life.h"

#include <gmock/gmock.h>

#include <atomic>
#include <memory>
#include <mutex>
#include <new>
#include <thread>

#include "index/build/directory_walk.h"
#include "index/build/ntfs_volume.h"
#include "index/engine/volume_list.h"
#include "index/life/volume_life_fixture.h"
#include "platform/files.h"
#include "platform/utf.h"
#include "support/held_job.h"
#include "support/scripted_device.h"

namespace quilmark {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::FieldsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

TEST_F(VolumeLife, StartIndexesEveryDriveAndTellsTheWindowTwice) {
  MapF();
  MapE();
  MapN();
  QueueNtfsBuild();

  Start();

  EXPECT_THAT(Drives(), ElementsAre(u"E:", u"F:", u"N:"));
  EXPECT_EQ(Volume(2).fileSystem, u"NTFS");
  EXPECT_TRUE(Volume(2).follower.monitorRunning);
  EXPECT_TRUE(engine.ready);
  EXPECT_EQ(engine.window, window.Target());
  EXPECT_THAT(Posted(), ElementsAre(std::tuple(1025u, 0u, 0), std::tuple(1033u, 0u, 0)));
}

TEST_F(VolumeLife, WithoutAUsableDriveTheWindowIsToldToTryAgain) {
  MapN();  // its device cannot be opened
  scripts.Script(u"N:").QueueOpenError(kErrorAccessDenied);
  scripts.Script(u"N:").QueueOpenError(kErrorAccessDenied);

  Start();

  EXPECT_THAT(Drives(), IsEmpty());
  EXPECT_FALSE(engine.ready);
  EXPECT_THAT(Posted(), ElementsAre(std::tuple(1025u, 1u, 0)));
  EXPECT_EQ(kSyncRetryMs, 5'000u);
}

TEST_F(VolumeLife, ADriveThatDoesNotTellItsFileSystemIsLeftOutAtTheStart) {
  MapDrive(u'E', folder.PathOf(u"missing"));
  MapF();

  Start();

  EXPECT_THAT(Drives(), ElementsAre(u"F:"));
}

TEST_F(VolumeLife, AFolderWithoutEntriesIsNoVolume) {
  folder.MakeFolder("empty");
  MapDrive(u'E', folder.PathOf(u"empty"));

  Start();

  EXPECT_THAT(Drives(), IsEmpty());
}

std::vector<std::u16string> hookCalls;

TEST_F(VolumeLife, CachesLoadAtTheEndOfTheStart) {
  hookCalls.clear();
  engine.startupHooks = {.loadAttributeCache = [] { hookCalls.push_back(u"attributes"); },
                         .loadSizes = [](VolumeIndex& volume) { hookCalls.push_back(volume.drive); },
                         .writeMissingAttributeCache = [] { hookCalls.push_back(u"write"); }};
  MapE();
  MapN();
  QueueNtfsBuild();

  Start();

  EXPECT_THAT(hookCalls, ElementsAre(u"attributes", u"N:", u"write"));
}

TEST_F(VolumeLife, CachesLoadWithTheFirstDriveWhereTheStartFoundNone) {
  hookCalls.clear();
  engine.startupHooks = {.loadAttributeCache = [] { hookCalls.push_back(u"attributes"); },
                         .loadSizes = [](VolumeIndex& volume) { hookCalls.push_back(volume.drive); },
                         .writeMissingAttributeCache = [] { hookCalls.push_back(u"write"); }};

  Start();
  Sync();
  EXPECT_THAT(hookCalls, IsEmpty());

  MapE();
  Sync();
  EXPECT_THAT(hookCalls, ElementsAre(u"attributes", u"write"));

  engine.ready = false;  // as after the last drive has gone
  Sync();
  EXPECT_THAT(hookCalls, SizeIs(2)) << "once a run";
}

TEST_F(VolumeLife, CachesThatTheStartHasLoadedAreNotLoadedAgain) {
  hookCalls.clear();
  engine.startupHooks = {.loadAttributeCache = [] { hookCalls.push_back(u"attributes"); }};
  MapE();

  Start();
  engine.ready = false;
  Sync();

  EXPECT_THAT(hookCalls, SizeIs(1));
}

TEST_F(VolumeLife, ACacheThatCannotBeLoadedCostsNothingElse) {
  hookCalls.clear();
  engine.startupHooks = {.loadAttributeCache = [] { throw std::bad_alloc(); },
                         .loadSizes = [](VolumeIndex&) { throw std::bad_alloc(); },
                         .writeMissingAttributeCache = [] { hookCalls.push_back(u"write"); }};
  MapN();
  QueueNtfsBuild();

  Start();

  EXPECT_THAT(hookCalls, ElementsAre(u"write"));
  EXPECT_THAT(Posted(), Contains(FieldsAre(WM_VOLUMES_SYNCED, 0u, 0)));
  EXPECT_THAT(*ReadFileBytes(config.PathOf(u"perf_metrics.log")), HasSubstr("startup index_ms="));
}

TEST_F(VolumeLife, TheStartWritesAMetricLine) {
  MapE();

  Start();

  const auto lines = ReadFileBytes(config.PathOf(u"perf_metrics.log"));
  ASSERT_TRUE(lines.has_value());
  EXPECT_THAT(*lines, HasSubstr("startup index_ms="));
  EXPECT_THAT(*lines, HasSubstr(" volume_count=1\r\n"));
}

TEST_F(VolumeLife, AShutdownDuringTheStartPostsAndLoadsNothing) {
  hookCalls.clear();
  engine.startupHooks = {.loadAttributeCache = [] { hookCalls.push_back(u"attributes"); },
                         .loadSizes = [](VolumeIndex& volume) { hookCalls.push_back(volume.drive); },
                         .writeMissingAttributeCache = [] { hookCalls.push_back(u"write"); }};
  MapE();
  ShutdownRequested = true;

  Start();

  EXPECT_THAT(Posted(), IsEmpty());
  EXPECT_THAT(hookCalls, IsEmpty());
}

TEST_F(VolumeLife, SyncAddsANewDrive) {
  MapE();
  Start();
  Posted();

  MapF();
  Sync();

  EXPECT_THAT(Drives(), ElementsAre(u"E:", u"F:"));
  EXPECT_THAT(Posted(), ElementsAre(std::tuple(1033u, 0u, 0)));
  EXPECT_FALSE(engine.syncing.IsRunning());
}

TEST_F(VolumeLife, SyncLeavesAValidVolumeAlone) {
  MapE();
  Start();
  folder.MakeFile("e/later.txt");

  Sync();

  EXPECT_EQ(Volume(0).records.size(), 1u);
}

TEST_F(VolumeLife, SyncRebuildsWhatIsNotValidInPlace) {
  MapE();
  Start();
  VolumeIndex* const before = &Volume(0);
  folder.MakeFile("e/later.txt");
  before->valid = false;

  Sync();

  EXPECT_EQ(&Volume(0), before);
  EXPECT_TRUE(before->valid);
  EXPECT_EQ(before->records.size(), 2u);
}

TEST_F(VolumeLife, SyncDoesNotRestartAMonitorThatEndedQuietly) {
  MapN();
  QueueNtfsBuild();
  scripts.Script(u"N:").QueueError(kFsctlReadUsnJournal, kErrorJournalEntryDeleted);
  Start();
  while (Volume(0).follower.monitorRunning) std::this_thread::yield();

  Sync();

  EXPECT_FALSE(Volume(0).follower.monitorRunning);
  EXPECT_TRUE(Volume(0).valid);
}

TEST_F(VolumeLife, SyncWalksADriveThatDoesNotTellItsFileSystem) {
  MapE();
  engine.readVolumeInfo = [](char16_t) -> std::optional<VolumeInfo> { return std::nullopt; };

  Sync();
  engine.readVolumeInfo = ReadVolumeInfo;

  ASSERT_THAT(Drives(), ElementsAre(u"E:"));
  EXPECT_EQ(Volume(0).fileSystem, u"");
  EXPECT_EQ(BuildPathLocked(Volume(0), 0), u"E:\\one.txt");
}

TEST_F(VolumeLife, NtfsIsNtfsInAnyCaseForTheSyncOnly) {
  MapN();
  engine.readVolumeInfo = [](char16_t) { return std::optional(VolumeInfo{.fileSystem = u"ntfs"}); };
  QueueNtfsBuild();

  Start();
  EXPECT_THAT(Drives(), IsEmpty()) << "an image is no folder to walk";
  Sync();
  engine.readVolumeInfo = ReadVolumeInfo;

  ASSERT_THAT(Drives(), ElementsAre(u"N:"));
  EXPECT_TRUE(Volume(0).follower.monitorRunning);
}

TEST_F(VolumeLife, SyncThatFindsNoValidVolumeIsNotReady) {
  MapE();
  Start();
  UnmapDrive(u'E');
  RemoveUnavailableVolumes(engine);
  Finish();

  Sync();

  EXPECT_FALSE(engine.ready);
  EXPECT_THAT(Drives(), ElementsAre(u"E:")) << "kept, with its records";
}

TEST_F(VolumeLife, ASecondSyncReturnsAtOnce) {
  HeldJob running(engine.syncing);

  SyncCurrentVolumesAsync(engine, window.Target());

  EXPECT_TRUE(engine.syncing.TakeAsked()) << "refused";
  running.End();
  Finish();
  EXPECT_THAT(Posted(), IsEmpty());
}

TEST_F(VolumeLife, AStickThatIsPulledAndPutBackIsRebuiltInPlace) {
  MapE();
  MapN();
  QueueNtfsBuild();
  Start();
  VolumeIndex* const stick = &Volume(1);

  UnmapDrive(u'N');
  EXPECT_TRUE(RemoveUnavailableVolumes(engine));
  Finish();

  EXPECT_FALSE(stick->valid);
  EXPECT_FALSE(stick->follower.monitorRunning);
  EXPECT_EQ(scripts.Script(u"N:").OpenDevices(), 0);
  EXPECT_EQ(stick->records.size(), 1u) << "records stay in memory";
  EXPECT_TRUE(Volume(0).valid);

  MapN();
  QueueNtfsBuild();
  Sync();
  EXPECT_EQ(&Volume(1), stick);
  EXPECT_TRUE(stick->valid);
  EXPECT_TRUE(stick->follower.monitorRunning);
}

TEST_F(VolumeLife, NothingToRemoveIsFalse) {
  MapE();
  Start();
  EXPECT_FALSE(RemoveUnavailableVolumes(engine));
  UnmapDrive(u'E');
  EXPECT_TRUE(RemoveUnavailableVolumes(engine));
  EXPECT_FALSE(RemoveUnavailableVolumes(engine)) << "its volume is out already";
}

TEST_F(VolumeLife, ReleaseClosesTheDeviceBeforeItReturns) {
  MapE();
  MapN();
  QueueNtfsBuild();
  Start();

  EXPECT_FALSE(ReleaseVolumesByMask(engine, 0));
  EXPECT_FALSE(ReleaseVolumesByMask(engine, 1u << 25));
  EXPECT_TRUE(ReleaseVolumesByMask(engine, 1u << 13));

  EXPECT_EQ(scripts.Script(u"N:").OpenDevices(), 0);
  EXPECT_FALSE(Volume(1).valid);
  EXPECT_TRUE(Volume(0).valid);
  EXPECT_FALSE(ReleaseVolumesByMask(engine, 1u << 13)) << "released already";
}

TEST_F(VolumeLife, AWalkedStickThatIsPulledKeepsItsRecordsAndIsWalkedAgainInPlace) {
  MapE();
  MapF();
  Start();
  VolumeIndex* const stick = &Volume(0);

  UnmapDrive(u'E');
  EXPECT_TRUE(RemoveUnavailableVolumes(engine));
  Finish();
  EXPECT_FALSE(stick->valid);
  EXPECT_EQ(stick->records.size(), 1u) << "records stay in memory";

  folder.MakeFile("e/later.txt");
  MapE();
  Sync();
  EXPECT_EQ(&Volume(0), stick);
  EXPECT_TRUE(stick->valid);
  EXPECT_EQ(stick->records.size(), 2u);
}

TEST_F(VolumeLife, TwoSyncsInARowAreOne) {
  MapE();
  {
    // The first cannot end while the list is held.
    const std::scoped_lock lock(engine.volumesMutex);
    SyncCurrentVolumesAsync(engine, window.Target());
    SyncCurrentVolumesAsync(engine, window.Target());
  }
  Finish();

  EXPECT_THAT(Drives(), ElementsAre(u"E:"));
  // The first volume of all makes the engine ready.
  EXPECT_THAT(Posted(), ElementsAre(std::tuple(1025u, 0u, 0), std::tuple(1033u, 0u, 0)));
}

std::unique_ptr<VolumeDevice> FailToOpen(std::u16string_view, VolumeAccess, uint32_t&) {
  throw std::bad_alloc();
}

TEST_F(VolumeLife, AnExceptionOfOneDriveCostsThatDrive) {
  MapE();
  MapN();
  InstallVolumeOpener(FailToOpen);
  Start();
  EXPECT_THAT(Drives(), ElementsAre(u"E:"));
  using Message = std::tuple<uint32_t, uint64_t, int64_t>;
  EXPECT_THAT(Posted(), ElementsAre(Message{WM_INDEX_STATE, 0, 0}, Message{WM_VOLUMES_SYNCED, 0, 0}));
  MapF();
  Sync();
  EXPECT_THAT(Drives(), ElementsAre(u"E:", u"F:"));
  EXPECT_THAT(Posted(), ElementsAre(Message{WM_VOLUMES_SYNCED, 0, 0}));
}

TEST_F(VolumeLife, AWalkClosesTheDeviceThatTheDriveHadBefore) {
  MapN();
  QueueNtfsBuild();
  VolumeIndex volume;
  ASSERT_TRUE(BuildNtfsVolume(volume, u"N:"));
  EXPECT_EQ(scripts.Script(u"N:").OpenDevices(), 1);
  UnmapDrive(u'N');
  MapDrive(u'N', folder.PathOf(u"e"));
  ASSERT_TRUE(BuildWalkVolume(volume, u"N:", u"exFAT"));
  EXPECT_EQ(scripts.Script(u"N:").OpenDevices(), 0);
  EXPECT_FALSE(volume.follower.IsOpen());
  EXPECT_EQ(volume.journalId, 0u);
  EXPECT_EQ(volume.nextUsn, 0);
}

}  // namespace
}  // namespace quilmark
