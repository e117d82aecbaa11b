#include "index/follow/data_changes.h"

#include <gtest/gtest.h>

#include <atomic>
#include <mutex>

#include "config/scratch_config.h"
#include "index/build/ntfs_volume.h"
#include "index/follow/usn_monitor.h"
#include "platform/drives.h"
#include "platform/file_reference.h"
#include "platform/usn_record.h"
#include "search/attributes/attr_cache.h"
#include "search/attributes/attr_jobs.h"
#include "search/attributes/data_changes_fixture.h"
#include "search/attributes/folder_sizes.h"
#include "support/gives.h"
#include "support/ntfs_builder.h"
#include "support/scratch_folder.h"
#include "support/scripted_device.h"
#include "support/search_harness.h"

namespace quilmark {
namespace {

TEST_F(DataChangesOfAVolume, AFileThatIsWrittenToIsAskedForAnew) {
  Build();
  EXPECT_EQ(Ask().size, 10);
  fileFacts = {.size = 11, .modified = 21, .created = 30};
  EXPECT_EQ(Ask().size, 10) << "from the cache";

  JournalSays(2'000, kFile, kExtend);

  EXPECT_EQ(Ask().size, 11);
  EXPECT_EQ(Ask().modified, 21u);
  EXPECT_EQ(timesTold, 1);
}

TEST_F(DataChangesOfAVolume, DatesThatAreSetCountToo) {
  Build();
  Ask();
  fileFacts.created = 31;
  JournalSays(2'000, kFile, kBasicInfo);
  EXPECT_EQ(Ask().created, 31u);
}

TEST_F(DataChangesOfAVolume, OtherFilesStayAsTheyAre) {
  Build();
  Ask(Insist::kOnDisk, 2);
  JournalSays(2'000, kFile, kExtend);
  AttrEntry entry;
  EXPECT_TRUE(Gives(PeekAttr(volume, kOther), entry));
  EXPECT_EQ(timesTold, 0) << "nothing that anybody has seen changed";
}

TEST_F(DataChangesOfAVolume, ARowShowsWhatItHadUntilItIsAskedFor) {
  Build();
  Ask();
  fileFacts.size = 11;
  JournalSays(2'000, kFile, kExtend);
  StopMonitor(volume);  // which may hold the lock for longer than a glance

  const AttrGlance before = GlanceAtAttr(volume, kFile).value();
  EXPECT_TRUE(before.entry.valid);
  EXPECT_TRUE(before.entry.stale);
  EXPECT_EQ(before.entry.size, 10);
  Ask();
  const AttrGlance after = GlanceAtAttr(volume, kFile).value();
  EXPECT_FALSE(after.entry.stale);
  EXPECT_EQ(after.entry.size, 11);
}

TEST_F(DataChangesOfAVolume, WhatIsWrittenAllTheTimeIsToldOfOnceForEachTimeItWasAsked) {
  Build();
  Ask();
  const uint64_t generation = AttrCacheGeneration;
  for (int64_t i = 0; i < 20; ++i) JournalSays(2'000 + i, kFile, kExtend);
  EXPECT_EQ(timesTold, 1);
  Ask();
  EXPECT_EQ(AttrCacheGeneration, generation) << "the whole cache is saved again, for ever";
}

// The next look asks anew; until then it stands where it stood.
TEST_F(DataChangesOfAVolume, AStaleFileIsPutInOrderByWhatItWas) {
  Build();
  Ask();
  JournalSays(2'000, kFile, kExtend);
  StopMonitor(volume);
  const uint64_t frns[] = {kFile};
  AttrEntry entries[1];
  PeekAttrs(volume, frns, entries, Stale::kAsItWas);
  EXPECT_TRUE(entries[0].valid);
  EXPECT_EQ(entries[0].size, 10);
  ASSERT_TRUE(GlanceAtAttrs(volume, frns, entries));
  EXPECT_EQ(entries[0].size, 10);
  PeekAttrs(volume, frns, entries);
  EXPECT_FALSE(entries[0].valid);
}

TEST_F(DataChangesOfAVolume, ARowInViewIsKnownToBeStale) {
  Build();
  Ask();
  const ResultSet rows = {{&volume, 1}};
  EXPECT_FALSE(ShowsStale(rows, {0, 1}));
  JournalSays(2'000, kFile, kExtend);
  StopMonitor(volume);
  EXPECT_TRUE(ShowsStale(rows, {0, 5}));
  EXPECT_FALSE(ShowsStale(rows, {1, 5})) << "another row is in view";
  Ask();
  EXPECT_FALSE(ShowsStale(rows, {0, 1}));
}

// The size was read before the change, and stored when the change had been taken in.
TEST_F(DataChangesOfAVolume, WhoAskedBeforeTheChangeIsNotBelieved) {
  Build();
  meanwhile = [&] {
    const std::scoped_lock lock(volume.attrLock);  // the look comes to its end behind the store
    ++volume.dataWatch.looks;
    volume.dataWatch.changed = {kFile};
  };
  CloseVolume(volume);
  volume.follower.TakeDevice(scripts.Open(u"N:"), u"N:");
  Ask();
  AttrEntry entry;
  EXPECT_TRUE(Gives(PeekAttr(volume, kFile), entry));
  const std::atomic<bool> wanted = true;
  const auto scratch = std::make_unique<ControlBuffer<65'536>>();

  for (uint32_t i = 0; i < kTurnsALook; ++i) {
    WatchData(volume, *volume.follower.Device(), 1'000, scratch->bytes, wanted);
  }

  EXPECT_FALSE(Gives(PeekAttr(volume, kFile), entry));
  Ask();
  for (uint32_t i = 0; i < kTurnsALook; ++i) {
    WatchData(volume, *volume.follower.Device(), 1'000, scratch->bytes, wanted);
  }
  EXPECT_TRUE(Gives(PeekAttr(volume, kFile), entry)) << "asked behind the change";
}

TEST_F(DataChangesOfAVolume, ALookThatLostItsPlaceBelievesNothing) {
  Build();
  Ask();
  Ask(Insist::kOnDisk, 2);
  script.QueueError(kReadOfDataChanges, kErrorJournalEntryDeleted);
  Look();
  AttrEntry entry;
  EXPECT_FALSE(Gives(PeekAttr(volume, kFile), entry));
  EXPECT_FALSE(Gives(PeekAttr(volume, kOther), entry));
}

TEST_F(DataChangesOfAVolume, TheSizeOfAScanBecomesThatOfTheRecord) {
  Build();
  InstallMftSizes(volume, {{kFile, {.logical = 10, .allocated = 10}}, {kOther, {.logical = 5}}});
  uint64_t total = 0;
  ASSERT_TRUE(Gives(GetFolderSize(volume, kDocs, IfDirty::kLeave), total));
  EXPECT_EQ(total, 15u);
  script.Queue(kFsctlGetNtfsFileRecord, {.output = RecordWithData(kFile, 100)});

  JournalSays(2'000, kFile, kExtend);

  EXPECT_TRUE(volume.folderSizesDirty);
  ASSERT_TRUE(Gives(GetFolderSize(volume, kDocs, IfDirty::kRebuild), total));
  EXPECT_EQ(total, 105u);
}

TEST_F(DataChangesOfAVolume, ARecordThatDoesNotTellLeavesTheSizeOfAScan) {
  Build();
  InstallMftSizes(volume, {{kFile, {.logical = 10, .allocated = 10}}});
  JournalSays(2'000, kFile, kExtend);  // the device has no records
  MftSize size;
  EXPECT_TRUE(Gives(LookupMftSize(volume, kFile), size));
  EXPECT_EQ(size.logical, 10u);
  EXPECT_FALSE(volume.folderSizesDirty);
}

// Its $DATA is in a second record, of which the list tells.
class SizeInASecondRecord : public DataChangesOfAVolume {
 protected:
  SizeInASecondRecord() {
    Build();
    InstallMftSizes(volume, {{kFile, {.logical = 10, .allocated = 10}}});
  }
  ~SizeInASecondRecord() override { UnmapDrive(u'N'); }
  void Change() {
    const Bytes list = RecordBuilder::ListValue({{kData, 0, MakeReference(60, 1), {}}});
    const Bytes record = RecordBuilder()
                             .StandardInformation()
                             .Resident(kAttributeList, {}, list)
                             .Finish({.sequence = SequenceOf(kFile)});
    Bytes data = FileRecordData(kFile);
    data.resize(12);
    data.insert(data.end(), record.begin(), record.end());
    script.Queue(kFsctlGetNtfsFileRecord, {.output = data});
    JournalSays(2'000, kFile, kExtend);
  }
  uint64_t HeldSize() {
    MftSize size;
    EXPECT_TRUE(Gives(LookupMftSize(volume, kFile), size));
    return size.logical;
  }
};

TEST_F(SizeInASecondRecord, IsThatOfThePath) {
  script.PlayFacts([](uint64_t) { return std::optional<FileFacts>(); });
  ScratchFolder folder;
  folder.MakeFile("Docs/a.txt", std::string(100, 'x'));
  MapDrive(u'N', folder.PathOf(u""));
  Change();
  EXPECT_EQ(HeldSize(), 100u);
  EXPECT_TRUE(volume.folderSizesDirty);
}

TEST_F(SizeInASecondRecord, IsThatOfTheImageWhereTheVolumeHasNoPaths) {
  fileFacts.size = 200;
  Change();
  EXPECT_EQ(HeldSize(), 200u);
}

TEST_F(SizeInASecondRecord, StaysWhereNobodyTells) {
  script.PlayFacts([](uint64_t) { return std::optional<FileFacts>(); });
  Change();
  EXPECT_EQ(HeldSize(), 10u);
}

TEST_F(DataChangesOfAVolume, ANewNameKeepsTheSizeOfAScan) {
  Build();
  InstallMftSizes(volume, {{kFile, {.logical = 10, .allocated = 10}}, {kOther, {.logical = 5}}});
  script.Queue(kFsctlReadUsnJournal, {.output = UsnBlockBuilder(2'000).Record(kFile, kDocs, u"c.txt",
                                                                              kUsnReasonRenameNewName)});
  Look();
  script.Queue(kFsctlGetNtfsFileRecord, {.output = RecordWithData(kFile, 10)});
  JournalSays(2'000, kFile, kUsnReasonRenameNewName);
  MftSize size;
  ASSERT_TRUE(Gives(LookupMftSize(volume, kFile), size));
  EXPECT_EQ(size.logical, 10u);
}

// 300,000 records of 1,000 files, as those that are written to all day leave them.
TEST_F(DataChangesOfAVolume, AWholeJournalTakesTheMemoryOfItsDifferentFiles) {
  constexpr int kBlocks = 300, kRecords = 1'000;
  for (int block = 1; block <= kBlocks; ++block) {
    UsnBlockBuilder built(1'000 + block);
    for (uint64_t file = 0; file < kRecords; ++file) built.Record(kFile + file, kDocs, u"", kExtend);
    script.Queue(kReadOfDataChanges, {.output = built});
  }
  const auto changes = ReadDataChanges(*scripts.Open(u"N:"), 77, 1'000);
  ASSERT_TRUE(changes);
  EXPECT_EQ(changes->usn, 1'000 + kBlocks);
  ASSERT_EQ(changes->frns.size(), size_t{kRecords});
  EXPECT_EQ(changes->frns.front(), kFile);
  EXPECT_EQ(changes->frns.back(), kFile + kRecords - 1);
  EXPECT_LT(changes->frns.capacity(), size_t{20 * kRecords}) << "nothing gives room back on the way";
}

}  // namespace
}  // namespace quilmark
