#include "index/follow/usn_monitor.h"

#include <gmock/gmock.h>

#include <chrono>
#include <future>
#include <shared_mutex>
#include <thread>

#include "index/build/ntfs_volume.h"
#include "index/engine/search_engine.h"
#include "index/tables/presumed_gone.h"
#include "platform/bytes.h"
#include "platform/files.h"
#include "platform/usn_record.h"
#include "support/environment.h"
#include "support/scratch_folder.h"
#include "support/scripted_device.h"

namespace quilmark {
namespace {

using testing::ElementsAre;

constexpr uint64_t kRoot = 5;
constexpr uint32_t kCreate = kUsnReasonFileCreate, kDelete = kUsnReasonFileDelete,
                   kOldName = kUsnReasonRenameOldName, kNewName = kUsnReasonRenameNewName;

uint32_t IndexOfFrn(const VolumeIndex& volume, uint64_t frn) {
  return static_cast<uint32_t>(IndexOf(volume.frnToIndex, volume.records, frn).value_or(0xFFFF'FFFF));
}

void Add(VolumeIndex& volume, uint64_t frn, uint64_t parentFrn, bool isDirectory,
         std::u16string_view name) {
  const uint32_t index =
      AppendRecord(volume, {.frn = frn, .parentFrn = parentFrn, .isDirectory = isDirectory}, name);
  SetIndexOf(volume.frnToIndex, volume.records, frn, index);
}

// N:\Docs (40) with a.txt (41) and b.txt (42), and N:\Other (50).
struct JournalBlock : testing::Test {
  VolumeIndex volume;
  JournalBlock() {
    const std::unique_lock lock(volume.indexLock);
    volume.drive = u"N:";
    Add(volume, kRoot, kRoot, true, u".");
    Add(volume, 40, kRoot, true, u"Docs");
    Add(volume, 41, 40, false, u"a.txt");
    Add(volume, 42, 40, false, u"b.txt");
    Add(volume, 50, kRoot, true, u"Other");
  }
  ~JournalBlock() override {
    ShutdownRequested = false;
    const std::shared_lock lock(volume.indexLock);
    EXPECT_EQ(FindBrokenInvariant(volume), "");
  }
  std::u16string PathOf(uint64_t frn) { return BuildPathLocked(volume, IndexOfFrn(volume, frn)); }
  const FileRecord& RecordOf(uint64_t frn) { return volume.records[IndexOfFrn(volume, frn)]; }
};

TEST_F(JournalBlock, ADeletedFileIsFlaggedAndItsAttributesForgotten) {
  volume.attrs[41] = {.size = 3, .valid = true};
  volume.mftSizes[41] = {.logical = 3, .allocated = 4096};
  volume.folderSizesDirty = false;
  const uint64_t generation = AttrCacheGeneration;

  ApplyJournalBlock(volume, UsnBlockBuilder(500).Record(41, 40, u"a.txt", kDelete));

  EXPECT_EQ(RecordOf(41).deleted, 1u);
  EXPECT_EQ(volume.deletedCount, 1u);
  EXPECT_FALSE(volume.attrs.contains(41));
  EXPECT_FALSE(volume.mftSizes.contains(41));
  EXPECT_TRUE(volume.folderSizesDirty);
  EXPECT_EQ(AttrCacheGeneration, generation + 1);
  EXPECT_EQ(volume.nextUsn, 500);
}

TEST_F(JournalBlock, DeletingAFileTwiceCountsOnce) {
  ApplyJournalBlock(
      volume, UsnBlockBuilder().Record(41, 40, u"a.txt", kDelete).Record(41, 40, u"a.txt", kDelete));
  EXPECT_EQ(volume.deletedCount, 1u);
}

TEST_F(JournalBlock, ChildrenOfADeletedFolderStayUntilTheJournalReportsThem) {
  ApplyJournalBlock(volume, UsnBlockBuilder().Record(40, kRoot, u"Docs", kDelete));

  EXPECT_EQ(RecordOf(41).deleted, 0u);
  EXPECT_EQ(PathOf(41), u"N:\\Docs\\a.txt");
}

// The program has deleted the folder, and knew it at once.
TEST_F(JournalBlock, NewsOfWhatIsKnownToBeGoneChangesNothing) {
  PresumeGone(volume, std::vector{IndexOfFrn(volume, 40)});
  ASSERT_EQ(volume.deletedCount, 3u);
  ApplyJournalBlock(volume, UsnBlockBuilder()
                                .Record(41, 40, u"a.txt", kDelete)
                                .Record(42, 40, u"b.txt", kDelete)
                                .Record(40, kRoot, u"Docs", kDelete, kFileAttributeDirectory));
  EXPECT_EQ(volume.deletedCount, 3u);
  EXPECT_TRUE(volume.presumedGone.with.empty());
  EXPECT_TRUE(volume.presumedGone.below.empty());
}

TEST_F(JournalBlock, AFolderInTheRecycleBinIsFoundThereWithAllThatItHolds) {
  PresumeGone(volume, std::vector{IndexOfFrn(volume, 40)});
  ApplyJournalBlock(volume, UsnBlockBuilder()
                                .Record(42, 40, u"b.txt", kDelete)
                                .Record(40, kRoot, u"Docs", kOldName, kFileAttributeDirectory)
                                .Record(40, 50, u"$RQ", kNewName, kFileAttributeDirectory));
  EXPECT_EQ(volume.deletedCount, 1u);
  EXPECT_EQ(RecordOf(42).deleted, 1u) << "was not in it any more";
  EXPECT_EQ(PathOf(41), u"N:\\Other\\$RQ\\a.txt");
  // And back again.
  ApplyJournalBlock(volume,
                    UsnBlockBuilder().Record(40, kRoot, u"Docs", kNewName, kFileAttributeDirectory));
  EXPECT_EQ(PathOf(41), u"N:\\Docs\\a.txt");
  EXPECT_EQ(RecordOf(41).deleted, 0u);
}

TEST_F(JournalBlock, AFileThatIsKnownToBeGoneLivesWhereTheJournalNamesIt) {
  PresumeGone(volume, std::vector{IndexOfFrn(volume, 41)});
  ApplyJournalBlock(volume, UsnBlockBuilder().Record(41, 50, u"$RA.txt", kNewName));
  EXPECT_EQ(RecordOf(41).deleted, 0u);
  EXPECT_EQ(PathOf(41), u"N:\\Other\\$RA.txt");
}

TEST_F(JournalBlock, AFileThatIsRenamedTwiceEndsWithTheLastName) {
  ApplyJournalBlock(volume, UsnBlockBuilder()
                                .Record(41, 40, u"a.txt", kOldName)
                                .Record(41, 40, u"second.txt", kNewName)
                                .Record(41, 40, u"second.txt", kOldName)
                                .Record(41, 40, u"third.txt", kNewName));
  EXPECT_EQ(PathOf(41), u"N:\\Docs\\third.txt");
}

TEST_F(JournalBlock, ARenameKeepsTheIndexAndForgetsTheAttributes) {
  const uint32_t index = IndexOfFrn(volume, 41);
  const uint32_t count = volume.records.size();
  volume.attrs[41] = {.size = 3, .valid = true};

  ApplyJournalBlock(volume, UsnBlockBuilder().Record(41, 40, u"new.txt", kNewName));

  EXPECT_EQ(IndexOfFrn(volume, 41), index);
  EXPECT_EQ(volume.records.size(), count);
  EXPECT_TRUE(volume.attrs.empty());
}

TEST_F(JournalBlock, AMoveChangesTheParent) {
  ApplyJournalBlock(volume, UsnBlockBuilder().Record(41, 50, u"a.txt", kNewName));
  EXPECT_EQ(PathOf(41), u"N:\\Other\\a.txt");
}

TEST_F(JournalBlock, ChildrenOfARenamedFolderFollowIt) {
  ApplyJournalBlock(volume,
                    UsnBlockBuilder().Record(40, 50, u"Papers", kNewName, kFileAttributeDirectory));
  EXPECT_EQ(PathOf(41), u"N:\\Other\\Papers\\a.txt");
}

TEST_F(JournalBlock, ANewFileAppears) {
  ApplyJournalBlock(volume, UsnBlockBuilder()
                                .Record(60, 40, u"New", kCreate, kFileAttributeDirectory)
                                .Record(61, 60, u"n.txt", kCreate));
  EXPECT_EQ(PathOf(61), u"N:\\Docs\\New\\n.txt");
  EXPECT_EQ(RecordOf(60).isDirectory, 1u);
  EXPECT_EQ(RecordOf(61).isDirectory, 0u);
}

TEST_F(JournalBlock, TheLaterRecordsOfACreatedFileLeaveItsTextWhereItIs) {
  ApplyJournalBlock(volume, UsnBlockBuilder()
                                .Record(60, 40, u"new.txt", kCreate)
                                .Record(60, 40, u"new.txt", kCreate | 0x8000'0000));

  EXPECT_EQ(volume.apartCount, 0u);
  EXPECT_EQ(volume.renamed[0].pool.textCount, 0u);
  EXPECT_EQ(PathOf(60), u"N:\\Docs\\new.txt");
}

TEST_F(JournalBlock, AFileThatIsBackUnderItsOwnNameIsFoundAtItsFormerText) {
  ApplyJournalBlock(
      volume, UsnBlockBuilder().Record(41, 40, u"a.txt", kDelete).Record(41, 40, u"a.txt", kCreate));

  EXPECT_EQ(RecordOf(41).deleted, 0u);
  EXPECT_EQ(volume.deletedCount, 0u);
  EXPECT_EQ(volume.apartCount, 0u);
  EXPECT_FALSE(TestBit(volume.hidden, IndexOfFrn(volume, 41)));
}

TEST_F(JournalBlock, ARenamedFileThatIsBackUnderItsNewNameStaysApart) {
  ApplyJournalBlock(volume, UsnBlockBuilder()
                                .Record(41, 40, u"c.txt", kNewName)
                                .Record(41, 40, u"c.txt", kDelete)
                                .Record(41, 40, u"c.txt", kCreate));

  EXPECT_EQ(volume.apartCount, 1u);
  EXPECT_EQ(volume.renamed[0].pool.textCount, 1u);
  EXPECT_EQ(RecordOf(41).deleted, 0u);
  EXPECT_EQ(PathOf(41), u"N:\\Docs\\c.txt");
}

TEST_F(JournalBlock, AnotherSpellingOrAnotherFolderIsAnotherName) {
  ApplyJournalBlock(
      volume, UsnBlockBuilder().Record(41, 40, u"A.txt", kNewName).Record(42, 50, u"b.txt", kNewName));

  EXPECT_EQ(PathOf(41), u"N:\\Docs\\A.txt");
  EXPECT_EQ(PathOf(42), u"N:\\Other\\b.txt");
}

TEST_F(JournalBlock, AKnownRecordStaysWhatItIs) {
  ApplyJournalBlock(volume,
                    UsnBlockBuilder().Record(41, 40, u"a.txt", kNewName, kFileAttributeDirectory));
  EXPECT_EQ(RecordOf(41).isDirectory, 0u);
}

TEST_F(JournalBlock, ADeleteOfAnUnknownReferenceChangesNoRecord) {
  volume.attrs[99] = {.size = 1, .valid = true};
  const uint32_t count = volume.records.size();

  ApplyJournalBlock(volume, UsnBlockBuilder().Record(99, 40, u"x", kDelete));

  EXPECT_EQ(volume.records.size(), count);
  EXPECT_EQ(volume.deletedCount, 0u);
  EXPECT_TRUE(volume.attrs.empty()) << "forgotten all the same";
}

TEST_F(JournalBlock, AFileCreatedAndDeletedInOneBlockStaysAsAFlaggedRecord) {
  ApplyJournalBlock(volume,
                    UsnBlockBuilder().Record(60, 40, u"t", kCreate).Record(60, 40, u"t", kDelete));
  EXPECT_EQ(RecordOf(60).deleted, 1u);
  EXPECT_EQ(volume.deletedCount, 1u);
}

TEST_F(JournalBlock, DeleteAndCreateInOneRecordEndsAlive) {
  ApplyJournalBlock(volume, UsnBlockBuilder().Record(41, 40, u"a.txt", kDelete | kCreate));
  EXPECT_EQ(RecordOf(41).deleted, 0u);
  EXPECT_EQ(volume.deletedCount, 0u);
}

TEST_F(JournalBlock, ADeletedReferenceThatIsCreatedAgainComesBack) {
  ApplyJournalBlock(volume, UsnBlockBuilder().Record(41, 40, u"a.txt", kDelete));
  ApplyJournalBlock(volume, UsnBlockBuilder().Record(41, 50, u"again.txt", kCreate));
  EXPECT_EQ(RecordOf(41).deleted, 0u);
  EXPECT_EQ(volume.deletedCount, 0u);
  EXPECT_EQ(PathOf(41), u"N:\\Other\\again.txt");
}

TEST_F(JournalBlock, AnotherSequenceNumberIsAnotherFile) {
  const uint64_t reused = (uint64_t{7} << 48) | 41;
  ApplyJournalBlock(
      volume, UsnBlockBuilder().Record(41, 40, u"a.txt", kDelete).Record(reused, 40, u"b", kCreate));
  EXPECT_EQ(RecordOf(41).deleted, 1u);
  EXPECT_EQ(PathOf(reused), u"N:\\Docs\\b");
}

TEST_F(JournalBlock, AnOldNameAloneChangesNothing) {
  volume.attrs[41] = {.size = 3, .valid = true};
  ApplyJournalBlock(volume, UsnBlockBuilder(9).Record(41, 50, u"other", kOldName));
  EXPECT_EQ(PathOf(41), u"N:\\Docs\\a.txt");
  EXPECT_EQ(volume.attrs.size(), 1u);
  EXPECT_EQ(volume.nextUsn, 9);
}

TEST_F(JournalBlock, ABlockOfEightBytesLeavesThePosition) {
  volume.nextUsn = 77;
  ApplyJournalBlock(volume, UsnBlockBuilder(500));
  EXPECT_EQ(volume.nextUsn, 77);
}

TEST_F(JournalBlock, AMalformedRecordEndsTheBlockAndThePositionMovesOn) {
  ApplyJournalBlock(volume, UsnBlockBuilder(500)
                                .Record(60, 40, u"before", kCreate)
                                .RawLength(40)
                                .Record(61, 40, u"behind", kCreate));
  EXPECT_EQ(PathOf(60), u"N:\\Docs\\before");
  EXPECT_EQ(IndexOfFrn(volume, 61), 0xFFFF'FFFF);
  EXPECT_EQ(volume.nextUsn, 500);
}

TEST_F(JournalBlock, AttributesGoByRecordNumberToo) {
  const uint64_t frn = (uint64_t{9} << 48) | 70;
  volume.mftSizes[70] = {.logical = 1};
  volume.mftSizes[71] = {.logical = 2};
  const std::unique_lock lock(volume.indexLock);

  ForgetFileAttributes(volume, frn);

  EXPECT_FALSE(volume.mftSizes.contains(70));
  EXPECT_TRUE(volume.mftSizes.contains(71));
}

TEST_F(JournalBlock, WithoutSizesTheFolderTotalsStayTrusted) {
  volume.folderSizesDirty = false;
  const uint64_t generation = AttrCacheGeneration;
  const std::unique_lock lock(volume.indexLock);

  ForgetFileAttributes(volume, 41);

  EXPECT_FALSE(volume.folderSizesDirty);
  EXPECT_EQ(AttrCacheGeneration, generation);
}

TEST_F(JournalBlock, AListenerIsToldOfEachChangeWithItsPaths) {
  std::vector<std::u16string> told;
  volume.onChange = [&](const VolumeChange& change) {
    constexpr const char16_t* kWords[] = {u"created ", u"deleted ", u"renamed ", u"moved "};
    told.push_back(kWords[change.kind] + change.formerPath + u" > " + change.path);
  };

  ApplyJournalBlock(volume, UsnBlockBuilder()
                                .Record(60, 40, u"tmp", kCreate)
                                .Record(60, 40, u"tmp", kOldName)
                                .Record(60, 40, u"final", kNewName)
                                .Record(60, 40, u"final", kCreate | kNewName)
                                .Record(41, 50, u"a.txt", kNewName)
                                .Record(42, 40, u"b.txt", kDelete)
                                .Record(42, 40, u"b.txt", kDelete)
                                .Record(42, 40, u"b.txt", kCreate));

  EXPECT_THAT(told, ElementsAre(u"created  > N:\\Docs\\tmp", u"renamed N:\\Docs\\tmp > N:\\Docs\\final",
                                u"moved N:\\Docs\\a.txt > N:\\Other\\a.txt",
                                u"deleted  > N:\\Docs\\b.txt", u"created  > N:\\Docs\\b.txt"));
}

// A volume whose journal is played back by a script.
struct Monitor : testing::Test {
  ScriptedVolumes scripts;
  DeviceScript& script = scripts.Script(u"N:");
  VolumeIndex volume;
  PostQueue window;

  Monitor() {
    monitorPauses = {.afterReadMs = 1, .afterErrorMs = 1};
    volume.listeners.window = window.Target();
    script.Queue(kFsctlQueryUsnJournal, {.output = JournalData(77, 4096)});
    script.Queue(kFsctlEnumUsnData, {.output = Bytes(8)});
    script.Queue(kFsctlEnumUsnData, {.output = UsnBlockBuilder(1).Record(41, kRoot, u"a.txt")});
  }
  ~Monitor() override {
    CloseVolume(volume);
    monitorPauses = {};
    ShutdownRequested = false;
  }
  void QueueRead(const Bytes& block) { script.Queue(kFsctlReadUsnJournal, {.output = block}); }
  // The monitor has ended by itself, with all that it does behind its last turn.
  void Join() {
    while (volume.follower.monitorRunning) std::this_thread::yield();
    StopMonitor(volume);
  }
};

TEST_F(Monitor, ReadsOnFromWhereTheLastBlockEnded) {
  QueueRead(UsnBlockBuilder(5000).Record(41, kRoot, u"b.txt", kNewName));
  ASSERT_TRUE(BuildNtfsVolume(volume, u"N:"));

  ASSERT_TRUE(script.WaitForAsked(kFsctlReadUsnJournal, 2));

  CloseVolume(volume);
  EXPECT_EQ(BuildPathLocked(volume, 0), u"N:\\b.txt");
  std::vector<Bytes> inputs;
  for (const auto& asked : script.TakeAsked()) {
    if (asked.code == kFsctlReadUsnJournal) inputs.push_back(asked.input);
  }
  ASSERT_EQ(inputs[0].size(), 40u);
  EXPECT_EQ(LoadLe<int64_t>(inputs[0], 0), 4096);
  EXPECT_EQ(LoadLe<uint32_t>(inputs[0], 8), 0x3300u);
  EXPECT_EQ(LoadLe<uint32_t>(inputs[0], 12), 0u);
  EXPECT_EQ(LoadLe<uint64_t>(inputs[0], 16), 0u);
  EXPECT_EQ(LoadLe<uint64_t>(inputs[0], 24), 0u);
  EXPECT_EQ(LoadLe<uint64_t>(inputs[0], 32), 77u);
  EXPECT_EQ(LoadLe<int64_t>(inputs[1], 0), 5000);
}

struct MonitorEndsQuietly : Monitor, testing::WithParamInterface<uint32_t> {};
INSTANTIATE_TEST_SUITE_P(Errors, MonitorEndsQuietly,
                         testing::Values(kErrorOperationAborted, kErrorJournalEntryDeleted,
                                         kErrorJournalNotActive));

TEST_P(MonitorEndsQuietly, AndTheVolumeStaysSearchable) {
  script.QueueError(kFsctlReadUsnJournal, GetParam());
  ASSERT_TRUE(BuildNtfsVolume(volume, u"N:"));

  Join();

  EXPECT_TRUE(volume.valid);
  EXPECT_EQ(BuildPathLocked(volume, 0), u"N:\\a.txt");
  EXPECT_FALSE(window.Take(0).has_value());
}

struct MonitorEndsAsLost : Monitor, testing::WithParamInterface<uint32_t> {};
INSTANTIATE_TEST_SUITE_P(Errors, MonitorEndsAsLost,
                         testing::Values(kErrorAccessDenied, kErrorInvalidHandle,
                                         kErrorDeviceNotConnected));

TEST_P(MonitorEndsAsLost, AndTheWindowIsTold) {
  script.QueueError(kFsctlReadUsnJournal, GetParam());
  ASSERT_TRUE(BuildNtfsVolume(volume, u"N:"));

  const auto message = window.Take(60'000);

  ASSERT_TRUE(message.has_value());
  EXPECT_EQ(message->message, 1032u);
  EXPECT_EQ(message->first, 0u);
  EXPECT_EQ(message->second, 0);
  EXPECT_FALSE(volume.valid);
  EXPECT_FALSE(volume.follower.monitorRunning);
}

TEST_F(Monitor, AnotherErrorIsTriedAgain) {
  script.QueueError(kFsctlReadUsnJournal, 21);  // the device is not ready
  script.QueueError(kFsctlReadUsnJournal, kErrorMoreData);
  QueueRead(UsnBlockBuilder(5000).Record(41, kRoot, u"b.txt", kNewName));
  ASSERT_TRUE(BuildNtfsVolume(volume, u"N:"));

  ASSERT_TRUE(script.WaitForAsked(kFsctlReadUsnJournal, 4));

  EXPECT_TRUE(volume.follower.monitorRunning);
  EXPECT_EQ(BuildPathLocked(volume, 0), u"N:\\b.txt");
}

TEST_F(Monitor, StopDuringAReadCancelsIt) {
  script.HoldJournalReads(true);
  ASSERT_TRUE(BuildNtfsVolume(volume, u"N:"));
  ASSERT_TRUE(script.WaitForAsked(kFsctlReadUsnJournal, 1));

  StopMonitor(volume);

  EXPECT_FALSE(volume.follower.monitorRunning);
  EXPECT_TRUE(volume.valid);
  EXPECT_EQ(script.OpenDevices(), 1);
}

TEST_F(Monitor, StopCancelsUntilTheReadIsOut) {
  script.HoldJournalReads(true);
  script.MissCancels(2);
  ASSERT_TRUE(BuildNtfsVolume(volume, u"N:"));
  ASSERT_TRUE(script.WaitForAsked(kFsctlReadUsnJournal, 1));

  auto stopped = std::async(std::launch::async, [&] { StopMonitor(volume); });

  EXPECT_EQ(stopped.wait_for(std::chrono::minutes(1)), std::future_status::ready);
  script.HoldJournalReads(false);  // lets one go that hangs
}

TEST(MonitorPauses, PollThreeTimesASecondAndWaitASecondAfterAnError) {
  EXPECT_EQ(MonitorPauses{}.afterReadMs, 300u);
  EXPECT_EQ(MonitorPauses{}.afterErrorMs, 1'000u);
}

TEST_F(Monitor, AFullBlockIsNotFollowedByAnotherReadWithoutThePause) {
  monitorPauses = {.afterReadMs = 3'600'000, .afterErrorMs = 1};
  UsnBlockBuilder full(5000);
  for (uint64_t frn = 100; frn < 1'120; ++frn) full.Record(frn, kRoot, u"n", kCreate);
  ASSERT_GT(static_cast<const Bytes&>(full).size(), 65'000u);
  QueueRead(full);
  ASSERT_TRUE(BuildNtfsVolume(volume, u"N:"));
  while (BuildPathLocked(volume, 1'020) != u"N:\\n") std::this_thread::yield();

  CloseVolume(volume);

  EXPECT_EQ(script.AskedCount(kFsctlReadUsnJournal), 1u);
  EXPECT_EQ(volume.nextUsn, 5000);
}

TEST_F(Monitor, StopDuringThePauseNeedNotWaitForItsEnd) {
  monitorPauses = {.afterReadMs = 3'600'000, .afterErrorMs = 1};
  ASSERT_TRUE(BuildNtfsVolume(volume, u"N:"));
  ASSERT_TRUE(script.WaitForAsked(kFsctlReadUsnJournal, 1));

  StopMonitor(volume);

  EXPECT_FALSE(volume.follower.monitorRunning);
}

TEST_F(Monitor, StopWithoutAMonitorIsNothing) {
  StopMonitor(volume);
  EXPECT_FALSE(volume.follower.monitorRunning);
}

TEST_F(Monitor, AMonitorThatEndedIsNotRestartedButByABuild) {
  script.QueueError(kFsctlReadUsnJournal, kErrorJournalEntryDeleted);
  ASSERT_TRUE(BuildNtfsVolume(volume, u"N:"));
  Join();

  script.Queue(kFsctlQueryUsnJournal, {.output = JournalData(77, 8192)});
  ASSERT_TRUE(BuildNtfsVolume(volume, u"N:"));

  EXPECT_TRUE(volume.follower.monitorRunning);
  EXPECT_EQ(volume.nextUsn, 8192);
}

TEST_F(Monitor, AShutdownPostsNothing) {
  script.HoldJournalReads(true);
  script.QueueError(kFsctlReadUsnJournal, kErrorDeviceNotConnected);
  ASSERT_TRUE(BuildNtfsVolume(volume, u"N:"));
  ASSERT_TRUE(script.WaitForAsked(kFsctlReadUsnJournal, 1));

  ShutdownRequested = true;
  script.HoldJournalReads(false);
  Join();

  EXPECT_FALSE(volume.valid);
  EXPECT_FALSE(window.Take(0).has_value());
}

// The diagnostic log, in a folder of its own.
struct ScratchLog {
  ScratchFolder folder;
  ScopedEnvironment posix{"TMPDIR", folder.HostPath().string()};
  ScopedEnvironment windows{"TMP", folder.HostPath().string()};
  std::string Text() const { return ReadFileBytes(folder.PathOf(u"Quilmark_gdi.log")).value_or(""); }
};

TEST_F(Monitor, AnExceptionIsLoggedUnderTheNameOfTheMonitor) {
  const ScratchLog log;
  QueueRead(UsnBlockBuilder(5000).Record(41, kRoot, u"b.txt", kNewName));
  volume.onChange = [](const VolumeChange&) { throw std::runtime_error("listener"); };

  ASSERT_TRUE(BuildNtfsVolume(volume, u"N:"));

  ASSERT_TRUE(window.Take(60'000).has_value());
  EXPECT_THAT(log.Text(), testing::HasSubstr("[BackgroundThreadException] usn_monitor: listener"));
}

TEST_F(Monitor, SomethingElseThatIsThrownIsLoggedByTheNameAlone) {
  const ScratchLog log;
  QueueRead(UsnBlockBuilder(5000).Record(41, kRoot, u"b.txt", kNewName));
  volume.onChange = [](const VolumeChange&) { throw 1; };

  ASSERT_TRUE(BuildNtfsVolume(volume, u"N:"));

  ASSERT_TRUE(window.Take(60'000).has_value());
  EXPECT_THAT(log.Text(), testing::ContainsRegex("\\[BackgroundThreadException\\] usn_monitor\r?\n"));
  EXPECT_FALSE(volume.valid);
}

TEST_F(Monitor, AnExceptionEndsItAsLost) {
  const ScratchLog log;
  QueueRead(UsnBlockBuilder(5000).Record(41, kRoot, u"b.txt", kNewName));
  volume.onChange = [](const VolumeChange&) { throw std::runtime_error("listener"); };

  ASSERT_TRUE(BuildNtfsVolume(volume, u"N:"));

  ASSERT_TRUE(window.Take(60'000).has_value());
  EXPECT_FALSE(volume.valid);
  EXPECT_TRUE(volume.indexLock.try_lock()) << "let go by the exception";
  volume.indexLock.unlock();
}

}  // namespace
}  // namespace quilmark
