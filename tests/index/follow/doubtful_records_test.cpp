#include "index/follow/doubtful_records.h"

#include <gtest/gtest.h>

#include <shared_mutex>
#include <thread>

#include "index/build/ntfs_volume.h"
#include "index/engine/search_engine.h"
#include "index/follow/usn_monitor.h"
#include "platform/bytes.h"
#include "platform/file_reference.h"
#include "platform/usn_record.h"
#include "support/scripted_device.h"

namespace quilmark {
namespace {

constexpr uint64_t kRoot = MakeReference(5, 5), kFile = MakeReference(60, 3);
constexpr uint32_t kCreate = kUsnReasonFileCreate, kDelete = kUsnReasonFileDelete,
                   kNewName = kUsnReasonRenameNewName;

// N: with one file, kFile, of which the journal tells.
struct FilesInDoubt : testing::Test {
  ScriptedVolumes scripts;
  DeviceScript& script = scripts.Script(u"N:");
  VolumeIndex volume;

  FilesInDoubt() {
    monitorPauses = {.afterReadMs = 1, .afterErrorMs = 1};
    script.Queue(kFsctlQueryUsnJournal, {.output = JournalData(77, 64)});
    script.Queue(kFsctlEnumUsnData, {.output = Bytes(8)});
    script.Queue(kFsctlEnumUsnData, {.output = UsnBlockBuilder(1).Record(41, kRoot, u"a.txt")});
  }
  ~FilesInDoubt() override {
    CloseVolume(volume);
    monitorPauses = {};
    const std::shared_lock lock(volume.indexLock);
    EXPECT_EQ(FindBrokenInvariant(volume), "");
  }

  void JournalSays(std::initializer_list<uint32_t> reasons) {
    UsnBlockBuilder block(5'000);
    for (const uint32_t reason : reasons) block.Record(kFile, kRoot, u"temporary", reason);
    script.Queue(kFsctlReadUsnJournal, {.output = block});
  }
  void VolumeAnswers(Bytes data) { script.Queue(kFsctlGetNtfsFileRecord, {.output = std::move(data)}); }

  // Builds, and lets the monitor go through the journal and all of its turns.
  void Follow() {
    ASSERT_TRUE(BuildNtfsVolume(volume, u"N:"));
    ASSERT_TRUE(script.WaitForAsked(kFsctlReadUsnJournal, 3 + 2 * kAsksInDoubt));
    CloseVolume(volume);
  }
  bool IsAlive(uint64_t frn) {
    const auto index = IndexOf(volume.frnToIndex, volume.records, frn);
    return index && !volume.records[static_cast<uint32_t>(*index)].deleted;
  }
};

TEST_F(FilesInDoubt, OneWhoseRecordIsFreeIsDeleted) {
  JournalSays({kCreate | kDelete});
  VolumeAnswers(FileRecordData(kFile, false));
  Follow();
  EXPECT_FALSE(IsAlive(kFile));
  EXPECT_EQ(volume.deletedCount, 1u);
  EXPECT_EQ(script.AskedCount(kFsctlGetNtfsFileRecord), 1u);
}

TEST_F(FilesInDoubt, IsAskedForByItsRecordNumber) {
  JournalSays({kCreate | kDelete});
  VolumeAnswers(FileRecordData(kFile, false));
  Follow();
  for (const auto& asked : script.TakeAsked()) {
    if (asked.code != kFsctlGetNtfsFileRecord) continue;
    ASSERT_EQ(asked.input.size(), 8u);
    EXPECT_EQ(LoadLe<uint64_t>(asked.input, 0), 60u);
    EXPECT_GE(asked.outputSize, 12u + 4'096u);
    EXPECT_EQ(asked.outputAddress % 8, 0u);
  }
}

TEST_F(FilesInDoubt, OneBelowWhichAnotherIsInUseIsDeleted) {
  JournalSays({kCreate | kDelete});
  VolumeAnswers(FileRecordData(MakeReference(59, 3)));
  Follow();
  EXPECT_FALSE(IsAlive(kFile));
}

TEST_F(FilesInDoubt, OneWhoseRecordIsAnotherFilesByNowIsDeleted) {
  JournalSays({kCreate | kDelete});
  VolumeAnswers(FileRecordData(MakeReference(60, 4)));
  Follow();
  EXPECT_FALSE(IsAlive(kFile));
}

TEST_F(FilesInDoubt, OneThatWasRenamedAndDeletedAtOnceIsDeleted) {
  JournalSays({kCreate, kNewName | kDelete});
  VolumeAnswers(FileRecordData(kFile, false));
  Follow();
  EXPECT_FALSE(IsAlive(kFile));
}

TEST_F(FilesInDoubt, OneThatIsThereStaysAliveAndIsNotAskedForEver) {
  JournalSays({kCreate | kDelete});
  for (int i = 0; i < 2 * kAsksInDoubt; ++i) VolumeAnswers(FileRecordData(kFile));
  Follow();
  EXPECT_TRUE(IsAlive(kFile));
  EXPECT_EQ(script.AskedCount(kFsctlGetNtfsFileRecord), kAsksInDoubt);
}

TEST_F(FilesInDoubt, OneThatGoesWhileItIsAskedForIsDeleted) {
  JournalSays({kCreate | kDelete});
  VolumeAnswers(FileRecordData(kFile));
  script.QueueError(kFsctlGetNtfsFileRecord, kErrorReadFault);
  VolumeAnswers(FileRecordData(kFile, false));
  Follow();
  EXPECT_FALSE(IsAlive(kFile));
}

TEST_F(FilesInDoubt, OneThatTheVolumeDoesNotTellOfStaysAlive) {
  JournalSays({kCreate | kDelete});
  VolumeAnswers(Bytes(8));
  Bytes noRecord = FileRecordData(kFile);
  noRecord.resize(40);
  VolumeAnswers(noRecord);
  Follow();  // and error 1 from there on
  EXPECT_TRUE(IsAlive(kFile));
  EXPECT_EQ(script.AskedCount(kFsctlGetNtfsFileRecord), kAsksInDoubt);
}

TEST_F(FilesInDoubt, OneThatALaterRecordBringsBackIsNotInDoubt) {
  JournalSays({kCreate | kDelete, kCreate});
  Follow();
  EXPECT_TRUE(IsAlive(kFile));
  EXPECT_EQ(script.AskedCount(kFsctlGetNtfsFileRecord), 0u);
}

TEST_F(FilesInDoubt, OneThatALaterRecordDeletesIsNotInDoubt) {
  JournalSays({kCreate | kDelete, kDelete});
  Follow();
  EXPECT_FALSE(IsAlive(kFile));
  EXPECT_EQ(script.AskedCount(kFsctlGetNtfsFileRecord), 0u);
}

TEST_F(FilesInDoubt, AListenerIsToldThatTheyWent) {
  std::vector<VolumeChange::Kind> told;
  volume.onChange = [&](const VolumeChange& change) {
    EXPECT_EQ(change.path, u"N:\\temporary");
    told.push_back(change.kind);
  };
  JournalSays({kCreate | kDelete});
  VolumeAnswers(FileRecordData(kFile, false));
  Follow();
  EXPECT_EQ(told, (std::vector{VolumeChange::kCreated, VolumeChange::kDeleted}));
}

TEST_F(FilesInDoubt, ABuildKnowsOfNone) {
  JournalSays({kCreate | kDelete});
  script.Queue(kFsctlReadUsnJournal, {.error = kErrorJournalEntryDeleted, .output = {}});
  ASSERT_TRUE(BuildNtfsVolume(volume, u"N:"));
  while (volume.follower.monitorRunning) std::this_thread::yield();
  EXPECT_TRUE(volume.inDoubt.contains(kFile));

  const std::unique_lock lock(volume.indexLock);
  ResetVolumeTables(volume);
  EXPECT_TRUE(volume.inDoubt.empty());
}

}  // namespace
}  // namespace quilmark
