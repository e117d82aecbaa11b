#include "index/build/ntfs_volume.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <limits>
#include <new>
#include <shared_mutex>

#include "index/engine/search_engine.h"
#include "index/follow/usn_monitor.h"
#include "platform/bytes.h"
#include "platform/debug_output.h"
#include "platform/files.h"
#include "platform/usn_record.h"
#include "support/environment.h"
#include "support/scratch_folder.h"
#include "support/scripted_device.h"

namespace quilmark {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr uint64_t kRoot = 5;
constexpr int64_t kUnbounded = 0x7FFF'FFFF'FFFF'FFFF;

// The probe and the passes ask with the same code: the probe comes first.
struct NtfsVolume : testing::Test {
  ScriptedVolumes scripts;
  DeviceScript& script = scripts.Script(u"N:");
  VolumeIndex volume;

  ScratchFolder config;
  ScopedEnvironment configVariable{"QUILMARK_CONFIG_DIR", config.HostPath().string()};

  NtfsVolume() {
    monitorPauses = {.afterReadMs = 1, .afterErrorMs = 1};
    journalPauses = {.beforeRetryMs = 0};
  }
  ~NtfsVolume() override {
    CloseVolume(volume);
    monitorPauses = {};
    journalPauses = {};
    ShutdownRequested = false;
  }

  void QueueJournal(uint64_t id = 77, int64_t nextUsn = 4096) {
    script.Queue(kFsctlQueryUsnJournal, {.output = JournalData(id, nextUsn)});
  }
  void QueueErrors(uint32_t code, uint32_t error, int count) {
    for (int i = 0; i < count; ++i) script.QueueError(code, error);
  }
  void QueueProbe() { script.Queue(kFsctlEnumUsnData, {.output = Bytes(8)}); }
  void QueueBlock(const Bytes& block) { script.Queue(kFsctlEnumUsnData, {.output = block}); }

  std::vector<std::u16string> Paths() {
    std::vector<std::u16string> paths;
    for (uint32_t i = 0; i < volume.records.size(); ++i) paths.push_back(BuildPathLocked(volume, i));
    return paths;
  }
  // Codes asked until the monitor's first read.
  std::vector<uint32_t> CodesOfBuild() {
    std::vector<uint32_t> codes = script.AskedCodes();
    std::erase(codes, kFsctlReadUsnJournal);
    return codes;
  }
};

TEST_F(NtfsVolume, RecordsOfAllBlocksAreInTheIndex) {
  QueueJournal();
  QueueProbe();
  QueueBlock(UsnBlockBuilder(100)
                 .Record(kRoot, kRoot, u".", 0, kFileAttributeDirectory)
                 .Record(40, kRoot, u"Docs", 0, kFileAttributeDirectory));
  QueueBlock(UsnBlockBuilder(200).Record(0x3'0000'0000'0041, 40, u"a.txt"));

  ASSERT_TRUE(BuildNtfsVolume(volume, u"N:"));

  EXPECT_THAT(Paths(), ElementsAre(u"N:\\.", u"N:\\Docs", u"N:\\Docs\\a.txt"));
  EXPECT_TRUE(volume.valid);
  EXPECT_FALSE(volume.busy);
  EXPECT_EQ(volume.fileSystem, u"NTFS");
  EXPECT_EQ(volume.recordsRead, 3u);
  EXPECT_EQ(volume.journalId, 77u);
  EXPECT_EQ(volume.nextUsn, 4096);
  EXPECT_EQ(volume.records[1].isDirectory, 1u);
  EXPECT_EQ(volume.records[2].isDirectory, 0u);
  EXPECT_TRUE(volume.follower.monitorRunning);
  const std::shared_lock lock(volume.indexLock);
  EXPECT_EQ(FindBrokenInvariant(volume), "");
}

TEST_F(NtfsVolume, ThePositionIsTakenFirstThenRecordsThenTheJournal) {
  QueueJournal();
  QueueProbe();
  QueueBlock(UsnBlockBuilder(9).Record(40, kRoot, u"a"));

  ASSERT_TRUE(BuildNtfsVolume(volume, u"N:"));

  ASSERT_TRUE(script.WaitForAsked(kFsctlReadUsnJournal, 1));
  const auto asked = script.TakeAsked();
  ASSERT_GE(asked.size(), 5u);
  EXPECT_EQ(asked[0].code, kFsctlQueryUsnJournal);
  EXPECT_EQ(asked[0].outputSize, 56u);
  EXPECT_EQ(asked[1].code, kFsctlEnumUsnData);
  EXPECT_EQ(asked[1].outputSize, 520u);
  EXPECT_EQ(asked[2].code, kFsctlEnumUsnData);
  EXPECT_EQ(asked[2].outputSize, 65'536u);
  EXPECT_EQ(LoadLe<uint64_t>(asked[2].input, 0), 0u);
  EXPECT_EQ(LoadLe<int64_t>(asked[2].input, 8), 0);
  EXPECT_EQ(LoadLe<int64_t>(asked[2].input, 16), 4096);
  EXPECT_EQ(LoadLe<uint64_t>(asked[3].input, 0), 9u) << "goes on where the block said";
  EXPECT_EQ(asked[4].code, kFsctlReadUsnJournal);
}

TEST_F(NtfsVolume, ADeviceThatRefusesToBeWrittenIsOpenedForReading) {
  script.QueueOpenError(kErrorAccessDenied);
  QueueJournal();
  QueueProbe();
  QueueBlock(UsnBlockBuilder().Record(40, kRoot, u"a"));

  EXPECT_TRUE(BuildNtfsVolume(volume, u"N:"));

  EXPECT_THAT(script.Opens(), ElementsAre(VolumeAccess::kReadWrite, VolumeAccess::kRead));
}

TEST_F(NtfsVolume, ADeviceThatCannotBeOpenedLeavesTheVolumeInvalid) {
  script.QueueOpenError(kErrorAccessDenied);
  script.QueueOpenError(kErrorAccessDenied);

  EXPECT_FALSE(BuildNtfsVolume(volume, u"N:"));

  EXPECT_FALSE(volume.valid);
  EXPECT_FALSE(volume.busy);
  EXPECT_FALSE(volume.follower.monitorRunning);
  EXPECT_EQ(script.OpenDevices(), 0);
}

TEST_F(NtfsVolume, AMissingJournalIsCreatedAndFollowedFromItsBeginning) {
  script.QueueError(kFsctlQueryUsnJournal, kErrorJournalNotActive);
  script.Queue(kFsctlCreateUsnJournal, {});
  QueueJournal(78, 0);
  QueueProbe();
  QueueBlock(UsnBlockBuilder().Record(40, kRoot, u"a"));
  // The very first record of the journal.
  script.Queue(kFsctlReadUsnJournal,
               {.output = UsnBlockBuilder(88).Record(41, kRoot, u"b", kUsnReasonFileCreate)});

  EXPECT_TRUE(BuildNtfsVolume(volume, u"N:"));

  EXPECT_EQ(volume.journalId, 78u);
  ASSERT_TRUE(script.WaitForAsked(kFsctlReadUsnJournal, 2));
  CloseVolume(volume);
  EXPECT_THAT(Paths(), ElementsAre(u"N:\\a", u"N:\\b"));
  const auto asked = script.TakeAsked();
  ASSERT_GE(asked.size(), 3u);
  ASSERT_EQ(asked[1].code, kFsctlCreateUsnJournal);
  EXPECT_EQ(LoadLe<uint64_t>(asked[1].input, 0), 0x1000'0000u);
  EXPECT_EQ(LoadLe<uint64_t>(asked[1].input, 8), 0x100'0000u);
  const auto firstRead = std::find_if(
      asked.begin(), asked.end(), [](const auto& each) { return each.code == kFsctlReadUsnJournal; });
  ASSERT_NE(firstRead, asked.end());
  EXPECT_EQ(LoadLe<int64_t>(firstRead->input, 0), 0);
}

TEST_F(NtfsVolume, AJournalThatCannotBeCreatedLeavesTheVolumeInvalidAndItsDeviceClosed) {
  script.QueueError(kFsctlQueryUsnJournal, kErrorJournalNotActive);
  script.QueueError(kFsctlCreateUsnJournal, kErrorWriteProtect);
  script.QueueError(kFsctlQueryUsnJournal, kErrorJournalNotActive);

  EXPECT_FALSE(BuildNtfsVolume(volume, u"N:"));

  EXPECT_FALSE(volume.valid);
  EXPECT_FALSE(volume.busy);
  EXPECT_EQ(script.OpenDevices(), 0);
}

TEST_F(NtfsVolume, AFailedBuildClosesADeviceThatAnotherThreadStillHolds) {
  std::shared_ptr<VolumeDevice> held;
  script.Queue(kFsctlQueryUsnJournal, {.error = kErrorJournalNotActive, .output = {}, .meanwhile = [&] {
                                         held = volume.follower.Device();
                                       }});

  EXPECT_FALSE(BuildNtfsVolume(volume, u"N:"));

  EXPECT_NE(held, nullptr);
  EXPECT_EQ(volume.follower.Device(), nullptr);
  EXPECT_EQ(script.OpenDevices(), 0);
}

TEST_F(NtfsVolume, ProbeAnswersThatMeanAWorkingJournalLeadToNoRepair) {
  for (const uint32_t answer : {0u, kErrorHandleEof, kErrorMoreData}) {
    SCOPED_TRACE(answer);
    QueueJournal();
    script.QueueError(kFsctlEnumUsnData, answer);
    QueueBlock(UsnBlockBuilder().Record(40, kRoot, u"a"));
    script.TakeAsked();

    EXPECT_TRUE(BuildNtfsVolume(volume, u"N:"));

    EXPECT_THAT(CodesOfBuild(), ElementsAre(kFsctlQueryUsnJournal, kFsctlEnumUsnData, kFsctlEnumUsnData,
                                            kFsctlEnumUsnData));
  }
}

TEST_F(NtfsVolume, AJournalThatCannotBeUsedIsDeletedAndMadeAnew) {
  QueueJournal(77, 4096);
  QueueErrors(kFsctlEnumUsnData, 1178, 3);  // the journal is being deleted
  script.Queue(kFsctlDeleteUsnJournal, {});
  script.Queue(kFsctlCreateUsnJournal, {});
  QueueJournal(78, 0x500);
  QueueBlock(UsnBlockBuilder().Record(40, kRoot, u"a"));

  EXPECT_TRUE(BuildNtfsVolume(volume, u"N:"));

  EXPECT_EQ(volume.journalId, 78u);
  const auto asked = script.TakeAsked();
  ASSERT_GE(asked.size(), 8u);
  ASSERT_EQ(asked[4].code, kFsctlDeleteUsnJournal);
  EXPECT_EQ(LoadLe<uint64_t>(asked[4].input, 0), 77u);
  EXPECT_EQ(LoadLe<uint32_t>(asked[4].input, 8), 1u);
  ASSERT_EQ(asked[5].code, kFsctlCreateUsnJournal);
  EXPECT_EQ(LoadLe<uint64_t>(asked[5].input, 0), 0x1000'0000u);
  ASSERT_EQ(asked[6].code, kFsctlQueryUsnJournal);
  ASSERT_EQ(asked[7].code, kFsctlEnumUsnData);
  EXPECT_EQ(LoadLe<int64_t>(asked[7].input, 16), 0x500);
  EXPECT_THAT(*ReadFileBytes(config.PathOf(u"perf_metrics.log")),
              HasSubstr("journal replaced drive=N: probe_error=1178 former_id=77 id=78\r\n"));
}

TEST_F(NtfsVolume, ARepairThatFailsLeavesTheVolumeInvalid) {
  QueueJournal();
  QueueErrors(kFsctlEnumUsnData, 1178, 3);
  QueueErrors(kFsctlQueryUsnJournal, 1178, 3);

  EXPECT_FALSE(BuildNtfsVolume(volume, u"N:"));

  EXPECT_FALSE(volume.valid);
  EXPECT_EQ(script.OpenDevices(), 0);
}

TEST_F(NtfsVolume, AJournalOutlivesAProbeThatFailsTwice) {
  QueueJournal();
  QueueErrors(kFsctlEnumUsnData, 1450, 2);  // no resources just now
  QueueProbe();
  QueueBlock(UsnBlockBuilder().Record(40, kRoot, u"a"));

  EXPECT_TRUE(BuildNtfsVolume(volume, u"N:"));

  EXPECT_EQ(volume.journalId, 77u);
  EXPECT_EQ(script.AskedCount(kFsctlDeleteUsnJournal), 0u);
  EXPECT_THAT(Paths(), ElementsAre(u"N:\\a"));
  EXPECT_FALSE(ReadFileBytes(config.PathOf(u"perf_metrics.log")).has_value());
}

TEST_F(NtfsVolume, AJournalThatDoesNotTellItsPositionTwiceIsNotCreated) {
  QueueErrors(kFsctlQueryUsnJournal, 1450, 2);
  QueueJournal();
  QueueProbe();

  EXPECT_TRUE(BuildNtfsVolume(volume, u"N:"));

  EXPECT_EQ(script.AskedCount(kFsctlCreateUsnJournal), 0u);
}

TEST_F(NtfsVolume, AMissingJournalIsAskedForOnce) {
  script.QueueError(kFsctlQueryUsnJournal, kErrorJournalNotActive);
  QueueJournal();
  QueueProbe();

  EXPECT_TRUE(BuildNtfsVolume(volume, u"N:"));

  EXPECT_EQ(script.AskedCount(kFsctlQueryUsnJournal), 2u) << "before and behind its creation";
}

TEST(JournalPauses, ThreeTriesTakeHalfASecond) { EXPECT_EQ(2 * journalPauses.beforeRetryMs, 500u); }

TEST_F(NtfsVolume, WhatControlCodesWriteToIsAlignedToEightBytes) {
  QueueJournal();
  QueueProbe();
  ASSERT_TRUE(BuildNtfsVolume(volume, u"N:"));
  ASSERT_TRUE(script.WaitForAsked(kFsctlReadUsnJournal, 1));
  for (const auto& asked : script.TakeAsked()) EXPECT_EQ(asked.outputAddress % 8, 0u) << asked.code;
}

TEST_F(NtfsVolume, ABlockOfEightBytesIsDroppedAndTheLoopGoesOn) {
  QueueJournal();
  QueueProbe();
  QueueBlock(UsnBlockBuilder(50));
  QueueBlock(UsnBlockBuilder(60).Record(60, kRoot, u"behind"));

  EXPECT_TRUE(BuildNtfsVolume(volume, u"N:"));

  EXPECT_THAT(Paths(), ElementsAre(u"N:\\behind"));
}

TEST_F(NtfsVolume, AShortRecordEndsItsBlockAndTheNextBlockIsParsed) {
  QueueJournal();
  QueueProbe();
  QueueBlock(UsnBlockBuilder(1).Record(40, kRoot, u"first").RawLength(40).Record(41, kRoot, u"lost"));
  QueueBlock(UsnBlockBuilder(2).Record(42, kRoot, u"next"));

  EXPECT_TRUE(BuildNtfsVolume(volume, u"N:"));

  EXPECT_THAT(Paths(), ElementsAre(u"N:\\first", u"N:\\next"));
}

TEST_F(NtfsVolume, ANameThatRunsPastItsRecordEndsTheBlock) {
  QueueJournal();
  QueueProbe();
  QueueBlock(UsnBlockBuilder(1).Record(40, kRoot, u"first").LongName(41).Record(42, kRoot, u"lost"));
  QueueBlock(UsnBlockBuilder(2).Record(43, kRoot, u"next"));

  EXPECT_TRUE(BuildNtfsVolume(volume, u"N:"));

  EXPECT_THAT(Paths(), ElementsAre(u"N:\\first", u"N:\\next"));
}

TEST_F(NtfsVolume, AnEmptyFirstPassIsFollowedByAnUnboundedOne) {
  QueueJournal();
  QueueProbe();
  script.QueueError(kFsctlEnumUsnData, kErrorHandleEof);
  QueueBlock(UsnBlockBuilder(1).Record(40, kRoot, u"late"));

  EXPECT_TRUE(BuildNtfsVolume(volume, u"N:"));

  EXPECT_THAT(Paths(), ElementsAre(u"N:\\late"));
  const auto asked = script.TakeAsked();
  ASSERT_GE(asked.size(), 4u);
  EXPECT_EQ(LoadLe<uint64_t>(asked[3].input, 0), 0u);
  EXPECT_EQ(LoadLe<int64_t>(asked[3].input, 16), kUnbounded);
}

TEST_F(NtfsVolume, AVolumeWithoutRecordsIsValidAndFollowed) {
  QueueJournal();
  QueueProbe();

  EXPECT_TRUE(BuildNtfsVolume(volume, u"N:"));

  EXPECT_TRUE(volume.valid);
  EXPECT_THAT(Paths(), IsEmpty());
  EXPECT_TRUE(script.WaitForAsked(kFsctlReadUsnJournal, 1));
}

TEST_F(NtfsVolume, AnUnboundedJournalPositionNeedsNoSecondPass) {
  QueueJournal(77, kUnbounded);
  QueueProbe();

  EXPECT_TRUE(BuildNtfsVolume(volume, u"N:"));

  EXPECT_THAT(CodesOfBuild(), ElementsAre(kFsctlQueryUsnJournal, kFsctlEnumUsnData, kFsctlEnumUsnData));
}

TEST_F(NtfsVolume, AnEnumerationThatFailsMidwayKeepsWhatItHas) {
  QueueJournal();
  QueueProbe();
  QueueBlock(UsnBlockBuilder(1).Record(40, kRoot, u"kept"));
  script.QueueError(kFsctlEnumUsnData, kErrorReadFault);

  EXPECT_TRUE(BuildNtfsVolume(volume, u"N:"));

  EXPECT_TRUE(volume.valid);
  EXPECT_THAT(Paths(), ElementsAre(u"N:\\kept"));
}

TEST_F(NtfsVolume, ARebuildStopsTheMonitorClosesTheDeviceAndStartsAgain) {
  QueueJournal();
  QueueProbe();
  QueueBlock(UsnBlockBuilder(1).Record(40, kRoot, u"old"));
  ASSERT_TRUE(BuildNtfsVolume(volume, u"N:"));
  ASSERT_TRUE(script.WaitForAsked(kFsctlReadUsnJournal, 1));
  volume.nextSyntheticFrn = 0x12'3456;

  bool hasEnded = false;  // the former monitor, before the new device is asked for anything
  script.Queue(kFsctlQueryUsnJournal, {.output = JournalData(79, 8192), .meanwhile = [&] {
                                         hasEnded = !volume.follower.monitorRunning &&
                                                    script.OpenDevices() == 1;
                                       }});
  QueueProbe();
  QueueBlock(UsnBlockBuilder(1).Record(41, kRoot, u"new"));
  script.TakeAsked();
  EXPECT_TRUE(BuildNtfsVolume(volume, u"N:"));

  EXPECT_TRUE(hasEnded);
  EXPECT_THAT(Paths(), ElementsAre(u"N:\\new"));
  EXPECT_EQ(script.OpenDevices(), 1);
  EXPECT_EQ(script.Opens().size(), 2u);
  EXPECT_TRUE(volume.follower.monitorRunning);
  EXPECT_EQ(volume.nextSyntheticFrn, 0x12'3456u);
  const auto codes = script.AskedCodes();
  const auto query = std::find(codes.begin(), codes.end(), kFsctlQueryUsnJournal);
  const auto lastBlock = std::find(codes.rbegin(), codes.rend(), kFsctlEnumUsnData).base();
  EXPECT_EQ(std::count(query, lastBlock, kFsctlReadUsnJournal), 0) << "the former monitor has ended";
}

TEST_F(NtfsVolume, AFailedRebuildLeavesTheFormerTablesInvalid) {
  QueueJournal();
  QueueProbe();
  QueueBlock(UsnBlockBuilder(1).Record(40, kRoot, u"old"));
  ASSERT_TRUE(BuildNtfsVolume(volume, u"N:"));
  script.QueueOpenError(kErrorAccessDenied);
  script.QueueOpenError(kErrorAccessDenied);

  EXPECT_FALSE(BuildNtfsVolume(volume, u"N:"));

  EXPECT_FALSE(volume.valid);
  EXPECT_THAT(Paths(), ElementsAre(u"N:\\old"));
}

TEST_F(NtfsVolume, MemoryThatRunsOutWhileReadingLeavesTheVolumeOut) {
  QueueJournal();
  QueueProbe();
  QueueBlock(UsnBlockBuilder(1).Record(40, kRoot, u"a"));
  script.Queue(kFsctlEnumUsnData, {.output = {}, .meanwhile = [] { throw std::bad_alloc(); }});

  EXPECT_THROW((void)BuildNtfsVolume(volume, u"N:"), std::bad_alloc);

  EXPECT_FALSE(volume.valid);
  EXPECT_FALSE(volume.busy);
  EXPECT_EQ(script.OpenDevices(), 0);
}

TEST_F(NtfsVolume, MemoryThatRunsOutWhileParsingEndsTheReadingToo) {
  QueueJournal();
  QueueProbe();
  // The parser fails at the first name; the reader then has blocks without an end.
  volume.names.chunkCapacity = std::numeric_limits<size_t>::max() / 4;
  script.RepeatBlock(UsnBlockBuilder(1).Record(40, kRoot, u"a"));

  EXPECT_THROW((void)BuildNtfsVolume(volume, u"N:"), std::bad_alloc);

  EXPECT_FALSE(volume.valid);
  EXPECT_FALSE(volume.busy);
  EXPECT_EQ(script.OpenDevices(), 0);
}

TEST_F(NtfsVolume, ABuildBehindOneThatRanOutOfMemoryIsWhole) {
  QueueJournal();
  QueueProbe();
  script.Queue(kFsctlEnumUsnData, {.output = {}, .meanwhile = [] { throw std::bad_alloc(); }});
  EXPECT_THROW((void)BuildNtfsVolume(volume, u"N:"), std::bad_alloc);
  QueueJournal();
  QueueProbe();
  QueueBlock(UsnBlockBuilder(1).Record(40, kRoot, u"a"));

  EXPECT_TRUE(BuildNtfsVolume(volume, u"N:"));

  EXPECT_THAT(Paths(), ElementsAre(u"N:\\a"));
}

TEST_F(NtfsVolume, ShutdownBeforeTheEnumerationStartsNoMonitor) {
  QueueJournal();
  QueueProbe();
  ShutdownRequested = true;

  EXPECT_TRUE(BuildNtfsVolume(volume, u"N:"));

  EXPECT_FALSE(volume.follower.monitorRunning);
}

TEST_F(NtfsVolume, AShutdownInMidPassEndsThePassAndStartsNoMonitor) {
  QueueJournal();
  QueueProbe();
  QueueBlock(UsnBlockBuilder(1).Record(40, kRoot, u"first"));
  script.Queue(kFsctlEnumUsnData, {.output = UsnBlockBuilder(2).Record(41, kRoot, u"second"),
                                   .meanwhile = [] { ShutdownRequested = true; }});
  QueueBlock(UsnBlockBuilder(3).Record(42, kRoot, u"third"));

  EXPECT_TRUE(BuildNtfsVolume(volume, u"N:"));

  EXPECT_EQ(script.AskedCount(kFsctlEnumUsnData), 3u) << "the probe and two blocks";
  EXPECT_EQ(script.AskedCount(kFsctlReadUsnJournal), 0u);
  EXPECT_FALSE(volume.follower.monitorRunning);
  EXPECT_FALSE(volume.busy);
  EXPECT_LE(volume.records.size(), 2u);
}

TEST_F(NtfsVolume, AShutdownInAnEmptyPassIsFollowedByNoOther) {
  QueueJournal();
  QueueProbe();
  script.Queue(kFsctlEnumUsnData,
               {.error = kErrorHandleEof, .output = {}, .meanwhile = [] { ShutdownRequested = true; }});

  EXPECT_TRUE(BuildNtfsVolume(volume, u"N:"));

  EXPECT_EQ(script.AskedCount(kFsctlEnumUsnData), 2u) << "the probe and one pass";
  EXPECT_FALSE(volume.follower.monitorRunning);
}

std::string lastDebugOutput;

TEST_F(NtfsVolume, ACloseThatFailsIsWrittenToTheDebugger) {
  QueueJournal();
  QueueProbe();
  ASSERT_TRUE(BuildNtfsVolume(volume, u"N:"));
  script.FailClose(kErrorInvalidHandle);
  SetDebugOutputListener([](std::string_view text) { lastDebugOutput = text; });

  CloseVolume(volume);

  SetDebugOutputListener(nullptr);
  EXPECT_EQ(lastDebugOutput, "[Quilmark] CloseHandle failed, Error: 6 (0x00000006), Drive: N:\n");
}

TEST_F(NtfsVolume, ClosingTwiceIsClosingOnce) {
  QueueJournal();
  QueueProbe();
  ASSERT_TRUE(BuildNtfsVolume(volume, u"N:"));

  CloseVolume(volume);
  CloseVolume(volume);

  EXPECT_EQ(script.OpenDevices(), 0);
  EXPECT_FALSE(volume.follower.monitorRunning);
}

TEST_F(NtfsVolume, AVolumeThatWasTakenOutIsClosedUnlessItHasBeenBuiltSince) {
  QueueJournal();
  QueueProbe();
  ASSERT_TRUE(BuildNtfsVolume(volume, u"N:"));
  volume.follower.takenOut = true;
  QueueJournal();
  QueueProbe();
  ASSERT_TRUE(BuildNtfsVolume(volume, u"N:"));

  CloseTakenOut(volume);
  EXPECT_EQ(script.OpenDevices(), 1);
  EXPECT_TRUE(volume.follower.monitorRunning);

  volume.follower.takenOut = true;
  CloseTakenOut(volume);
  EXPECT_EQ(script.OpenDevices(), 0);
  EXPECT_FALSE(volume.follower.monitorRunning);
}

// Whatever fails, at whatever step: nothing is open that should not be, and the tables hold together.
TEST_F(NtfsVolume, EveryFailingCallLeavesAConsistentVolume) {
  const std::vector<uint32_t> calls = {kFsctlQueryUsnJournal, kFsctlEnumUsnData, kFsctlEnumUsnData,
                                       kFsctlEnumUsnData};
  for (size_t failing = 0; failing <= calls.size(); ++failing) {
    SCOPED_TRACE(failing);
    DeviceScript& failingScript = scripts.Script(u"F" + std::u16string(1, char16_t(u'0' + failing)));
    for (size_t i = 0; i < calls.size(); ++i) {
      const bool isQuery = calls[i] == kFsctlQueryUsnJournal;
      if (i == failing) {
        failingScript.QueueError(calls[i], 31);
      } else if (isQuery) {
        failingScript.Queue(calls[i], {.output = JournalData(1, 64)});
      } else {
        failingScript.Queue(calls[i], {.output = UsnBlockBuilder(1).Record(40 + i, kRoot, u"f")});
      }
    }
    VolumeIndex built;
    const bool isBuilt = BuildNtfsVolume(built, u"F" + std::u16string(1, char16_t(u'0' + failing)));
    EXPECT_EQ(built.valid, isBuilt);
    EXPECT_FALSE(built.busy);
    CloseVolume(built);
    EXPECT_EQ(failingScript.OpenDevices(), 0);
    const std::shared_lock lock(built.indexLock);
    EXPECT_EQ(FindBrokenInvariant(built), "");
  }
}

}  // namespace
}  // namespace quilmark
