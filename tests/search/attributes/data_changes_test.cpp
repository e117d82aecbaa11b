#include "index/follow/data_changes.h"

#include <gtest/gtest.h>

#include <atomic>
#include <map>

#include "config/config_directory.h"
#include "config/scratch_config.h"
#include "index/build/ntfs_volume.h"
#include "index/follow/usn_monitor.h"
#include "platform/drives.h"
#include "platform/file_reference.h"
#include "platform/files.h"
#include "platform/usn_record.h"
#include "search/attributes/attr_cache.h"
#include "search/attributes/attr_cache_file.h"
#include "search/attributes/attr_jobs.h"
#include "search/attributes/attr_positions.h"
#include "search/attributes/attr_replay.h"
#include "search/attributes/folder_sizes.h"
#include "support/gives.h"
#include "support/ntfs_builder.h"
#include "support/scratch_folder.h"
#include "support/scripted_device.h"
#include "support/search_harness.h"

namespace quilmark {
namespace {

constexpr uint64_t kRoot = MakeReference(5, 5), kDocs = MakeReference(40, 1),
                   kFile = MakeReference(41, 3), kOther = MakeReference(42, 3);
constexpr uint32_t kExtend = kUsnReasonDataExtend, kBasicInfo = kUsnReasonBasicInfoChange;

std::atomic<int> timesTold = 0;

// N:\Docs\a.txt (kFile) and b.txt (kOther), whose sizes and dates are those of `facts`.
class DataChangesOfAVolume : public testing::Test {
 protected:
  DataChangesOfAVolume() {
    monitorPauses = {.afterReadMs = 1, .afterErrorMs = 1};
    timesTold = 0;
    volume.listeners.attributesBecameStale = [] { ++timesTold; };
    script.PlayFacts([this](uint64_t frn) -> std::optional<FileFacts> {
      if (meanwhile) std::exchange(meanwhile, nullptr)();
      return frn == kFile ? std::optional(fileFacts) : FileFacts{.size = 7, .modified = 1, .created = 1};
    });
  }
  ~DataChangesOfAVolume() override {
    CloseVolume(volume);
    monitorPauses = {};
  }
  void Build(int64_t nextUsn = 1'000, uint64_t journalId = 77) {
    script.Queue(kFsctlQueryUsnJournal, {.output = JournalData(journalId, nextUsn)});
    script.Queue(kFsctlEnumUsnData, {.output = Bytes(8)});
    script.Queue(kFsctlEnumUsnData,
                 {.output = UsnBlockBuilder(1)
                                .Record(kDocs, kRoot, u"Docs", 0, kFileAttributeDirectory)
                                .Record(kFile, kDocs, u"a.txt")
                                .Record(kOther, kDocs, u"b.txt")});
    ASSERT_TRUE(BuildNtfsVolume(volume, u"N:"));
  }
  void Look() {
    ASSERT_TRUE(script.WaitForAsked(kReadOfDataChanges, script.AskedCount(kReadOfDataChanges) + 3));
  }
  void JournalSays(int64_t position, uint64_t frn, uint32_t reason) {
    script.Queue(kReadOfDataChanges,
                 {.output = UsnBlockBuilder(position).Record(frn, kDocs, u"a.txt", reason)});
    Look();
  }
  AttrEntry Ask(Insist insist = Insist::kOnDisk, uint32_t index = 1) {
    AttrEntry entry;
    EnsureFileAttributes(&volume, index, entry, insist);
    return entry;
  }
  Bytes RecordWithData(uint64_t frn, size_t size) const {
    Bytes data = FileRecordData(frn);
    data.resize(12);
    const Bytes record = RecordBuilder()
                             .StandardInformation()
                             .Resident(kData, u"", Bytes(size))
                             .Finish({.sequence = SequenceOf(frn)});
    data.insert(data.end(), record.begin(), record.end());
    return data;
  }

  ScratchConfig config;
  SearchHarness harness;
  ScriptedVolumes scripts;
  DeviceScript& script = scripts.Script(u"N:");
  FileFacts fileFacts{.size = 10, .modified = 20, .created = 30};
  std::function<void()> meanwhile;
  VolumeIndex& volume = *AddVolume(Engine(), std::make_unique<VolumeIndex>());
};

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

// The cache of a run, and what the next one believes of it.
class CacheOverARestart : public DataChangesOfAVolume {
 protected:
  CacheOverARestart() {
    Build(1'000);
    Ask();
    Ask(Insist::kOnDisk, 2);
    TheAttrCacheFile().isLoaded = true;
    SaveAttrCacheAtEnd(Engine());
  }
  // From here on the journal is read by who loads the cache, and by no monitor.
  void EndTheRun() {
    CloseVolume(volume);
    monitorPauses = {.afterReadMs = 60'000, .afterErrorMs = 60'000};
  }
  void Restart(uint64_t journalId = 77) {
    CloseVolume(volume);
    Build(5'000, journalId);
    LoadAttrCache(Engine());
  }
  std::u16string PositionsPath() const { return ConfigPath(u"attrpositions.v1.bin"); }
  bool IsShownOnly(uint64_t frn) const {
    const auto glance = GlanceAtAttr(volume, frn);
    return glance && glance->entry.valid && glance->entry.stale;
  }
  bool Holds(uint64_t frn) {
    AttrEntry entry;
    return Gives(PeekAttr(volume, frn), entry);
  }
};

TEST_F(CacheOverARestart, IsBelievedWhereNothingChanged) {
  Restart();
  EXPECT_TRUE(Holds(kFile));
  EXPECT_TRUE(Holds(kOther));
}

TEST_F(CacheOverARestart, LeavesOutWhatChangedMeanwhile) {
  EndTheRun();
  script.Queue(kReadOfDataChanges,
               {.output = UsnBlockBuilder(3'000).Record(kFile, kDocs, u"a.txt", kExtend)});
  Restart();
  EXPECT_FALSE(Holds(kFile));
  EXPECT_TRUE(Holds(kOther));
}

TEST_F(CacheOverARestart, LeavesOutWhatChangesWhileItIsLoaded) {
  EndTheRun();
  script.Queue(kReadOfDataChanges, {.output = UsnBlockBuilder(3'000)});
  script.Queue(kReadOfDataChanges,
               {.output = UsnBlockBuilder(4'000).Record(kOther, kDocs, u"b.txt", kBasicInfo)});
  Restart();
  EXPECT_TRUE(Holds(kFile));
  EXPECT_FALSE(Holds(kOther));
}

TEST_F(CacheOverARestart, OfAnotherJournalIsNotBelieved) {
  Restart(78);
  EXPECT_FALSE(Holds(kFile));
  EXPECT_FALSE(Holds(kOther));
}

TEST_F(CacheOverARestart, WhosePositionTheJournalHasLostIsNotBelieved) {
  EndTheRun();
  script.QueueError(kReadOfDataChanges, kErrorJournalEntryDeleted);
  Restart();
  EXPECT_FALSE(Holds(kFile));
}

TEST_F(CacheOverARestart, BeginsWhereTheLastRunHadLooked) {
  EXPECT_EQ(LoadAttrPositions(),
            (std::vector<AttrPosition>{{.letter = u'N', .journalId = 77, .usn = 1'000}}));
}

TEST_F(CacheOverARestart, HasNoPositionOfAVolumeThatIsBeingBuilt) {
  EXPECT_TRUE(PositionOf(volume).has_value());
  const BusyMark busy(volume);
  EXPECT_FALSE(PositionOf(volume).has_value());
}

TEST_F(CacheOverARestart, WithoutAFileOfPositionsIsBelieved) {
  ASSERT_TRUE(RemoveFile(PositionsPath()));
  Restart();
  EXPECT_TRUE(Holds(kFile));
  EXPECT_TRUE(Holds(kOther));
}

// As a program leaves it that is ended while it writes, and as one of another version does.
TEST_F(CacheOverARestart, WithPositionsThatCannotBeReadIsShownAndNotBelieved) {
  const std::string bytes = ReadFileBytes(PositionsPath()).value();
  const std::string unmarked = std::string(12, '\0') + bytes.substr(12);
  for (const std::string& broken :
       {bytes.substr(0, 20), unmarked, std::string(), std::string(99'999, 'x')}) {
    ASSERT_TRUE(WriteFileBytes(PositionsPath(), broken));
    Restart();
    EXPECT_FALSE(Holds(kFile)) << broken.size();
    EXPECT_TRUE(IsShownOnly(kFile)) << broken.size();
  }
}

TEST_F(CacheOverARestart, WithoutAPositionOfItsLetterIsShownAndNotBelieved) {
  SaveAttrPositions(std::vector<AttrPosition>{{.letter = u'M', .journalId = 77, .usn = 1'000}});
  Restart();
  EXPECT_FALSE(Holds(kFile));
  EXPECT_TRUE(IsShownOnly(kFile));
  EXPECT_EQ(Ask().size, 10);
  EXPECT_TRUE(Holds(kFile)) << "asked anew";
}

TEST_F(CacheOverARestart, DoesNotSaveWhatIsStale) {
  JournalSays(2'000, kFile, kExtend);
  SaveAttrCacheAtEnd(Engine());
  Restart();
  EXPECT_FALSE(Holds(kFile));
  EXPECT_TRUE(Holds(kOther));
}

TEST(AttrPositionBytes, ComeBackAsTheyWere) {
  const std::vector<AttrPosition> positions = {{.letter = u'C', .journalId = 1, .usn = 2},
                                               {.letter = u'N', .journalId = ~uint64_t{0}, .usn = -3}};
  const std::string bytes = AttrPositionBytes(positions);
  EXPECT_EQ(bytes.size(), 12u + 2 * 18);
  EXPECT_EQ(ReadAttrPositionBytes(std::as_bytes(std::span(bytes))), positions);
}

TEST(AttrPositionBytes, OfAnotherKindOrNotWholeAreNone) {
  const std::string bytes = AttrPositionBytes(std::vector<AttrPosition>{{.letter = u'C'}});
  for (size_t size = 0; size < bytes.size(); ++size) {
    EXPECT_FALSE(ReadAttrPositionBytes(std::as_bytes(std::span(bytes)).first(size)).has_value());
  }
  for (const size_t place : {size_t{0}, size_t{4}, size_t{8}}) {
    std::string other = bytes;
    ++other[place];
    EXPECT_FALSE(ReadAttrPositionBytes(std::as_bytes(std::span(other))).has_value());
  }
  const std::string longer = bytes + "x";
  EXPECT_FALSE(ReadAttrPositionBytes(std::as_bytes(std::span(longer))).has_value());
}

}  // namespace
}  // namespace quilmark
