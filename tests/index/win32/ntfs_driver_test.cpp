// The road of Windows from end to end: CreateFileW and DeviceIoControl on a volume of the test driver.
#include <gmock/gmock.h>

#include <shared_mutex>
#include <thread>

#include "driver/open_gate.h"
#include "driver/test_volume_server.h"
#include "index/build/ntfs_volume.h"
#include "index/follow/usn_monitor.h"
#include "platform/drives.h"
#include "platform/ntfs/raw_ntfs_device.h"
#include "platform/usn_record.h"
#include "support/ntfs_builder.h"
#include "support/scripted_device.h"

namespace quilmark {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr uint64_t kRoot = 5;

std::vector<std::u16string> PathsOf(const VolumeIndex& volume) {
  const std::shared_lock lock(volume.indexLock);
  std::vector<std::u16string> paths;
  for (uint32_t i = 0; i < volume.records.size(); ++i) {
    if (!volume.records[i].deleted) paths.push_back(BuildPath(volume, i));
  }
  return paths;
}

// What an open of a volume looks like: shared with everybody, folders of the volume allowed.
OpenCall OpenOf(DWORD access) {
  return {.access = access,
          .share = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
          .disposition = OPEN_EXISTING,
          .flags = FILE_ATTRIBUTE_NORMAL | FILE_FLAG_BACKUP_SEMANTICS};
}

// N: answered by a script.
struct NtfsDriver : testing::Test {
  ScriptedVolumes scripts;
  DeviceScript& script = scripts.Script(u"N:");
  std::unique_ptr<VolumeDevice> answers = scripts.Open(u"N:");
  PostQueue window;
  std::unique_ptr<TestVolumeServer> server;
  VolumeIndex volume;

  NtfsDriver() {
    InstallVolumeOpener(nullptr);  // the program's own
    monitorPauses = {.afterReadMs = 1, .afterErrorMs = 1};
    volume.listeners.window = window.Target();
    server = std::make_unique<TestVolumeServer>(*answers);
  }
  ~NtfsDriver() override {
    script.HoldJournalReads(false);
    CloseVolume(volume);
    monitorPauses = {};
  }
  void QueueBuild(int64_t nextUsn = 4'096) {
    script.Queue(kFsctlQueryUsnJournal, {.output = JournalData(77, nextUsn)});
    script.Queue(kFsctlEnumUsnData, {.output = Bytes(8)});
    script.Queue(kFsctlEnumUsnData, {.output = UsnBlockBuilder(1).Record(41, kRoot, u"a.txt")});
  }
};

TEST_F(NtfsDriver, TheVolumeSaysThatItIsNtfs) {
  script.Queue(kFsctlQueryUsnJournal, {.output = JournalData(77, 4'096)});
  const auto info = ReadVolumeInfo(u'N');
  ASSERT_TRUE(info.has_value());
  EXPECT_EQ(info->fileSystem, u"NTFS");
  EXPECT_EQ(info->label, u"driven");
  EXPECT_EQ(info->serial, 0x1234'5678u);
}

TEST_F(NtfsDriver, RecordsComeIntoTheIndexAndTheJournalIsFollowed) {
  QueueBuild();
  script.Queue(kFsctlReadUsnJournal, {.output = UsnBlockBuilder(5'000)
                                                    .Record(41, kRoot, u"b.txt", kUsnReasonRenameNewName)
                                                    .Record(42, kRoot, u"new", kUsnReasonFileCreate)});

  ASSERT_TRUE(BuildNtfsVolume(volume, u"N:"));
  ASSERT_TRUE(script.WaitForAsked(kFsctlReadUsnJournal, 2));

  EXPECT_THAT(PathsOf(volume), ElementsAre(u"N:\\b.txt", u"N:\\new"));
  EXPECT_TRUE(volume.follower.monitorRunning);
}

TEST_F(NtfsDriver, ChangesFedWhileTheMonitorPollsAreApplied) {
  QueueBuild();
  ASSERT_TRUE(BuildNtfsVolume(volume, u"N:"));
  for (uint64_t i = 0; i < 20; ++i) {
    script.Queue(kFsctlReadUsnJournal,
                 {.output = UsnBlockBuilder(static_cast<int64_t>(5'000 + i))
                                .Record(100 + i, kRoot, u"f", kUsnReasonFileCreate)});
    ASSERT_TRUE(script.WaitForAsked(kFsctlReadUsnJournal, script.AskedCount(kFsctlReadUsnJournal) + 2));
  }
  EXPECT_EQ(PathsOf(volume).size(), 21u);
}

TEST_F(NtfsDriver, AVolumeThatRefusesWritingIsOpenedForReading) {
  const OpenGate gate(GENERIC_WRITE);
  QueueBuild();

  EXPECT_TRUE(BuildNtfsVolume(volume, u"N:"));

  EXPECT_THAT(gate.Calls(), ElementsAre(OpenOf(GENERIC_READ | GENERIC_WRITE), OpenOf(GENERIC_READ)));
  EXPECT_THAT(PathsOf(volume), ElementsAre(u"N:\\a.txt"));
}

TEST_F(NtfsDriver, AVolumeThatMayBeWrittenIsOpenedOnce) {
  const OpenGate gate(0);
  QueueBuild();
  EXPECT_TRUE(BuildNtfsVolume(volume, u"N:"));
  EXPECT_THAT(gate.Calls(), ElementsAre(OpenOf(GENERIC_READ | GENERIC_WRITE)));
}

TEST_F(NtfsDriver, AVolumeThatRefusesBothIsNotValid) {
  const OpenGate gate(GENERIC_READ | GENERIC_WRITE);
  QueueBuild();

  EXPECT_FALSE(BuildNtfsVolume(volume, u"N:"));

  EXPECT_FALSE(volume.valid);
  EXPECT_THAT(gate.Calls(), ElementsAre(OpenOf(GENERIC_READ | GENERIC_WRITE), OpenOf(GENERIC_READ)));
  EXPECT_THAT(script.AskedCodes(), IsEmpty());
}

TEST_F(NtfsDriver, StopWhileAReadWaitsEndsItAtOnce) {
  script.HoldJournalReads(true);
  QueueBuild();
  ASSERT_TRUE(BuildNtfsVolume(volume, u"N:"));
  ASSERT_TRUE(script.WaitForAsked(kFsctlReadUsnJournal, 1));

  StopMonitor(volume);

  EXPECT_FALSE(volume.follower.monitorRunning);
  EXPECT_TRUE(volume.valid) << "aborted reads end quietly";
}

TEST_F(NtfsDriver, ChangesThatAWaitingReadBringsAreApplied) {
  script.HoldJournalReads(true);
  QueueBuild();
  ASSERT_TRUE(BuildNtfsVolume(volume, u"N:"));
  ASSERT_TRUE(script.WaitForAsked(kFsctlReadUsnJournal, 1));

  script.Queue(kFsctlReadUsnJournal,
               {.output = UsnBlockBuilder(5'000).Record(41, kRoot, u"a.txt", kUsnReasonFileDelete)});
  script.HoldJournalReads(false);
  ASSERT_TRUE(script.WaitForAsked(kFsctlReadUsnJournal, 2));

  EXPECT_THAT(PathsOf(volume), IsEmpty());
}

TEST_F(NtfsDriver, CloseWhileAReadWaitsGivesTheDeviceBack) {
  script.HoldJournalReads(true);
  QueueBuild();
  ASSERT_TRUE(BuildNtfsVolume(volume, u"N:"));
  ASSERT_TRUE(script.WaitForAsked(kFsctlReadUsnJournal, 1));

  CloseVolume(volume);

  EXPECT_FALSE(volume.follower.monitorRunning);
  EXPECT_EQ(volume.follower.Device(), nullptr);
}

TEST_F(NtfsDriver, ALostDeviceIsToldToTheWindow) {
  QueueBuild();
  ASSERT_TRUE(BuildNtfsVolume(volume, u"N:"));

  server->LoseDevice();
  const auto message = window.Take(60'000);

  ASSERT_TRUE(message.has_value());
  EXPECT_EQ(message->message, WM_VOLUME_LOST);
  EXPECT_FALSE(volume.valid);
}

TEST_F(NtfsDriver, AJournalThatWrappedEndsTheMonitorQuietly) {
  QueueBuild();
  script.QueueError(kFsctlReadUsnJournal, kErrorJournalEntryDeleted);
  ASSERT_TRUE(BuildNtfsVolume(volume, u"N:"));

  while (volume.follower.monitorRunning) std::this_thread::yield();

  EXPECT_FALSE(volume.follower.monitorRunning);
  EXPECT_TRUE(volume.valid);
  EXPECT_THAT(PathsOf(volume), ElementsAre(u"N:\\a.txt"));
}

TEST_F(NtfsDriver, AJournalThatCannotBeUsedIsDeletedAndMadeAnew) {
  script.Queue(kFsctlQueryUsnJournal, {.output = JournalData(77, 4'096)});
  for (int tries = 0; tries < 3; ++tries) script.QueueError(kFsctlEnumUsnData, 1178);
  script.Queue(kFsctlDeleteUsnJournal, {});
  script.Queue(kFsctlCreateUsnJournal, {});
  script.Queue(kFsctlQueryUsnJournal, {.output = JournalData(78, 0)});
  script.Queue(kFsctlEnumUsnData, {.output = UsnBlockBuilder(1).Record(41, kRoot, u"a.txt")});

  EXPECT_TRUE(BuildNtfsVolume(volume, u"N:"));

  std::vector<uint32_t> codes = script.AskedCodes();
  codes.resize(9);
  EXPECT_THAT(codes, ElementsAre(kFsctlQueryUsnJournal, kFsctlEnumUsnData, kFsctlEnumUsnData,
                                 kFsctlEnumUsnData, kFsctlDeleteUsnJournal, kFsctlCreateUsnJournal,
                                 kFsctlQueryUsnJournal, kFsctlEnumUsnData, kFsctlEnumUsnData));
  EXPECT_EQ(volume.journalId, 78u);
  EXPECT_THAT(PathsOf(volume), ElementsAre(u"N:\\a.txt"));
}

// N: answered from the bytes of a volume.
TEST(NtfsDriverOverBytes, TheIndexHasTheFilesOfTheVolume) {
  NtfsVolumeBuilder builder;
  builder.Folder(30, MakeReference(5, 1), u"Docs");
  for (uint64_t i = 0; i < 3'000; ++i) {
    builder.File(31 + i, MakeReference(30, 1), u"file " + std::u16string(1 + i % 40, u'x'));
  }
  const MemoryVolume bytes = builder.Build();
  const auto raw = OpenRawNtfs(bytes.Open());
  raw->Control(kFsctlCreateUsnJournal, {}, {});
  TestVolumeServer server(*raw);
  VolumeIndex volume;

  ASSERT_TRUE(BuildNtfsVolume(volume, u"N:"));
  CloseVolume(volume);

  EXPECT_EQ(volume.records.size(), 2u + 3'001);  // the $MFT and the root too
  const std::shared_lock lock(volume.indexLock);
  EXPECT_EQ(FindBrokenInvariant(volume), "");
}

}  // namespace
}  // namespace quilmark
