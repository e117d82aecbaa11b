#include "search/attributes/attr_cache_file.h"

#include <gtest/gtest.h>

#include <atomic>
#include <shared_mutex>
#include <thread>
#include <utility>

#include "config/config_directory.h"
#include "config/scratch_config.h"
#include "index/life/volume_life.h"
#include "platform/background.h"
#include "platform/bounded_jobs.h"
#include "platform/files.h"
#include "platform/text_file.h"
#include "search/attributes/attr_cache.h"
#include "search/attributes/attr_jobs.h"
#include "support/gate.h"
#include "support/gives.h"
#include "support/search_harness.h"
#include "support/volumes.h"

namespace quilmark {
namespace {

// One volume C: of journal 0x0102030405060708 with one entry, byte by byte.
constexpr unsigned char kFile[] = {
    'H',  'C',  'S',  'V',  1,    0,    0,    0, 1,    0, 0, 0,              // magic, version, volumes
    'C',  0,    8,    7,    6,    5,    4,    3, 2,    1, 1, 0, 0, 0,        // letter, journal, entries
    0x64, 0,    0,    0,    0,    0,    3,    0, 0xD2, 4, 0, 0, 0, 0, 0, 0,  // reference, size 1,234
    0x11, 0x22, 0x33, 0x44, 0x55, 0x66, 0x77, 1, 9,    8, 7, 6, 5, 4, 3, 2,  // modified, created
    1};
constexpr uint64_t kFrn = 0x0003'0000'0000'0064, kJournal = 0x0102'0304'0506'0708;
constexpr AttrEntry kEntry = {
    .size = 1'234, .modified = 0x0177'6655'4433'2211, .created = 0x0203'0405'0607'0809, .valid = true};

bool IsSame(const AttrEntry& a, const AttrEntry& b) {
  return a.size == b.size && a.modified == b.modified && a.created == b.created && a.valid == b.valid;
}

std::span<const std::byte> Bytes(const std::string& text) { return std::as_bytes(std::span(text)); }
std::string FileBytes() { return {reinterpret_cast<const char*>(kFile), sizeof kFile}; }

class AttrCacheFile : public testing::Test {
 protected:
  VolumeIndex& AddNtfs(std::u16string_view drive, uint64_t journalId) {
    auto volume = MakeTestVolume(drive);
    volume->fileSystem = u"NTFS";
    volume->journalId = journalId;
    AddFile(*volume, u"a.txt", kRootFrnOfTests, kFrn);
    return *AddVolume(Engine(), std::move(volume));
  }
  std::u16string Path() const { return GetConfigDirectory() + u"\\attrcache.v1.bin"; }
  bool HasFile() const { return IsExistingPath(Path()); }
  // Of a sort that ends well behind all others.
  static uint64_t NextDueMs() {
    static uint64_t last = TickMs();
    return last += 1'000'000;
  }
  bool Holds(const VolumeIndex& volume) {
    AttrEntry entry;
    return Gives(PeekAttr(volume, kFrn), entry) && IsSame(entry, kEntry);
  }

  ScratchConfig config;
  SearchHarness search;
};

TEST(AttrCacheBytes, AreWrittenByteByByte) {
  EXPECT_EQ(AttrCacheBytes({{u'C', kJournal, {{kFrn, kEntry}}}}), FileBytes());
}

TEST(AttrCacheBytes, AreReadByteByByte) {
  const auto volumes = ReadAttrCacheBytes(Bytes(FileBytes())).value();
  ASSERT_EQ(volumes.size(), 1u);
  EXPECT_EQ(volumes[0].letter, u'C');
  EXPECT_EQ(volumes[0].journalId, kJournal);
  ASSERT_EQ(volumes[0].entries.size(), 1u);
  EXPECT_EQ(volumes[0].entries[0].first, kFrn);
  EXPECT_TRUE(IsSame(volumes[0].entries[0].second, kEntry));
}

TEST(AttrCacheBytes, AreReadAsFarAsTheyGo) {
  std::vector<CachedVolume> volumes(2);
  for (CachedVolume& volume : volumes) {
    for (uint64_t frn = 1; frn <= 5; ++frn) volume.entries.emplace_back(frn, kEntry);
  }
  const std::string whole = AttrCacheBytes(volumes);
  for (size_t length = 0; length <= whole.size(); ++length) {
    const auto read =
        ReadAttrCacheBytes(Bytes(whole.substr(0, length))).value_or(std::vector<CachedVolume>());
    size_t entries = 0;
    for (const CachedVolume& volume : read) entries += volume.entries.size();
    const size_t second = 12 + 14 + 5 * 33 + 14;
    const size_t expected = length < 12 + 14  ? 0
                            : length < second ? std::min<size_t>((length - 26) / 33, 5)
                                              : 5 + (length - second) / 33;
    EXPECT_EQ(entries, expected) << length;
  }
}

TEST(AttrCacheBytes, OfAnotherKindOrVersionAreNone) {
  for (const size_t place : {0u, 3u, 4u, 7u}) {
    std::string bytes = FileBytes();
    ++bytes[place];
    EXPECT_FALSE(ReadAttrCacheBytes(Bytes(bytes))) << place;
  }
}

TEST(AttrCacheBytes, OfAVolumeWithMoreThanAMillionEntriesArePassedOver) {
  std::string bytes = FileBytes();
  bytes[8] = 2;
  bytes.replace(22, 4, std::string("\x41\x42\x0F\x00", 4));  // 1,000,001
  bytes.resize(26 + size_t{1'000'001} * 33);
  bytes += FileBytes().substr(12);
  const auto volumes = ReadAttrCacheBytes(Bytes(bytes)).value();
  ASSERT_EQ(volumes.size(), 1u);
  EXPECT_EQ(volumes[0].entries.size(), 1u);
}

TEST(AttrCacheBytes, WithACountBeyondTheFileAllocateNothingForIt) {
  std::string bytes = FileBytes();
  bytes.replace(22, 4, std::string("\x40\x42\x0F\x00", 4));  // 1,000,000
  EXPECT_EQ(ReadAttrCacheBytes(Bytes(bytes)).value()[0].entries.size(), 1u);
  bytes.replace(8, 4, std::string("\xFF\xFF\xFF\xFF", 4));
  EXPECT_EQ(ReadAttrCacheBytes(Bytes(bytes)).value().size(), 1u);
}

TEST_F(AttrCacheFile, ComesBackInTheNextRun) {
  VolumeIndex& volume = AddNtfs(u"C:", kJournal);
  StoreAttr(volume, kFrn, kEntry);
  SaveAttrCache(Engine());
  EXPECT_EQ(ReadFileBytes(Path()), FileBytes());
  EXPECT_EQ(TheAttrCacheFile().AttrSavedGeneration, AttrCacheGeneration);
  volume.attrs.clear();
  LoadAttrCache(Engine());
  EXPECT_TRUE(Holds(volume));
  EXPECT_EQ(TheAttrCacheFile().AttrSavedGeneration, AttrCacheGeneration);
  const auto metrics = ReadTextFile(GetConfigDirectory() + u"\\perf_metrics.log");
  EXPECT_NE(metrics->find(u"cache_save ms="), std::u16string::npos);
  EXPECT_NE(metrics->find(u" entries=1 bytes=59\n"), std::u16string::npos);
  EXPECT_NE(metrics->find(u"cache_load ms="), std::u16string::npos);
}

// Rows are painted meanwhile.
TEST_F(AttrCacheFile, IsTakenOverPieceByPiece) {
  constexpr uint64_t kCount = 100'000;
  VolumeIndex& volume = AddNtfs(u"C:", kJournal);
  CachedVolume cached{u'C', kJournal, {}};
  for (uint64_t frn = 1'000; frn < 1'000 + kCount; ++frn) {
    AddFile(volume, u"b", kRootFrnOfTests, frn);
    cached.entries.emplace_back(frn, kEntry);
  }
  bool hasSeenAPart = false;
  for (int round = 0; round < 50 && !hasSeenAPart; ++round) {
    volume.attrs.clear();
    std::atomic<bool> isTaken = false;
    std::thread taker([&] {
      EXPECT_EQ(TakeCachedVolumes(Engine(), {cached}), kCount);
      isTaken = true;
    });
    while (!isTaken && !hasSeenAPart) {
      const std::shared_lock lock(volume.attrLock);
      hasSeenAPart = !volume.attrs.empty() && volume.attrs.size() < kCount;
    }
    taker.join();
  }
  EXPECT_TRUE(hasSeenAPart);
  EXPECT_EQ(volume.attrs.size(), kCount);
}

TEST_F(AttrCacheFile, ComesBackAfterTheJournalWasMadeAnew) {
  VolumeIndex& volume = AddNtfs(u"C:", 99);
  ASSERT_TRUE(WriteFileBytes(Path(), FileBytes()));
  LoadAttrCache(Engine());
  EXPECT_TRUE(Holds(volume));
}

TEST_F(AttrCacheFile, KeepsOnlyFilesThatStillExist) {
  auto volume = MakeTestVolume(u"C:");
  volume->fileSystem = u"NTFS";
  VolumeIndex& added = *AddVolume(Engine(), std::move(volume));
  ASSERT_TRUE(WriteFileBytes(Path(), FileBytes()));
  LoadAttrCache(Engine());
  EXPECT_TRUE(added.attrs.empty());
}

TEST_F(AttrCacheFile, BringsNothingBackOfAFileThatWasDeletedSinceTheBuild) {
  VolumeIndex& volume = AddNtfs(u"C:", kJournal);
  MarkDeleted(volume, 1);
  ASSERT_TRUE(WriteFileBytes(Path(), FileBytes()));
  LoadAttrCache(Engine());
  EXPECT_TRUE(volume.attrs.empty());
}

TEST_F(AttrCacheFile, IsForNtfsVolumesAlone) {
  VolumeIndex& volume = AddNtfs(u"C:", kJournal);
  volume.fileSystem = u"FAT32";
  StoreAttr(volume, kFrn, kEntry);
  SaveAttrCache(Engine());
  EXPECT_EQ(ReadFileBytes(Path())->size(), 12u);
}

TEST_F(AttrCacheFile, LeavesOutEntriesWithoutDates) {
  VolumeIndex& volume = AddNtfs(u"C:", kJournal);
  StoreAttr(volume, kFrn, {.size = 5, .valid = true});
  SaveAttrCache(Engine());
  EXPECT_EQ(ReadFileBytes(Path())->size(), 26u);
}

// A reader passes over a volume of more.
TEST_F(AttrCacheFile, HoldsNoMoreThanAMillionEntriesOfAVolume) {
  VolumeIndex& volume = AddNtfs(u"C:", kJournal);
  volume.attrs.reserve(1'000'001);
  for (uint64_t frn = 1; frn <= 1'000'001; ++frn) volume.attrs.emplace(frn, kEntry);
  SaveAttrCache(Engine());
  const auto volumes = ReadAttrCacheBytes(Bytes(ReadFileBytes(Path()).value())).value();
  ASSERT_EQ(volumes.size(), 1u);
  EXPECT_EQ(volumes[0].entries.size(), 1'000'000u);
}

TEST_F(AttrCacheFile, OfAnotherVersionIsNotTakenForRead) {
  VolumeIndex& volume = AddNtfs(u"C:", kJournal);
  StoreAttr(volume, kFrn, kEntry);
  std::string bytes = FileBytes();
  bytes[4] = 2;
  for (const std::string& foreign : {bytes, FileBytes().substr(0, 11)}) {
    ASSERT_TRUE(WriteFileBytes(Path(), foreign));
    const uint64_t before = AttrCacheGeneration;
    LoadAttrCache(Engine());
    EXPECT_EQ(AttrCacheGeneration, before);
    EXPECT_TRUE(Holds(volume));
  }
}

TEST_F(AttrCacheFile, CostsItsDamagedEntriesAlone) {
  VolumeIndex& volume = AddNtfs(u"C:", kJournal);
  for (const AttrEntry& damaged :
       {AttrEntry{.size = -1, .modified = 1, .created = 1, .valid = true},
        AttrEntry{.size = 1, .modified = ~FileTime{0}, .created = 1, .valid = true}}) {
    TakeCachedVolumes(Engine(), {{.letter = u'C', .journalId = kJournal, .entries = {{kFrn, damaged}}}});
    EXPECT_TRUE(volume.attrs.empty());
  }
}

TEST_F(AttrCacheFile, IsNotWrittenByAJobBeforeThatOfTheLastRunWasLookedFor) {
  VolumeIndex& volume = AddNtfs(u"C:", kJournal);
  StoreAttr(volume, kFrn, kEntry);
  TheAttrCacheFile().isLoaded = false;
  AutosaveAttrCacheAsync(Engine());
  ASSERT_TRUE(WaitForBackgroundJobs(60'000));
  SaveAttrCacheAtEnd(Engine());
  EXPECT_FALSE(HasFile());
  TheAttrCacheFile().isLoaded = true;
  AutosaveAttrCacheAsync(Engine());
  ASSERT_TRUE(WaitForBackgroundJobs(60'000));
  EXPECT_TRUE(HasFile());
  const uint64_t saved = TheAttrCacheFile().AttrSavedGeneration;
  RemoveFile(Path());
  AutosaveAttrCacheAsync(Engine());  // nothing new
  ASSERT_TRUE(WaitForBackgroundJobs(60'000));
  EXPECT_FALSE(HasFile());
  EXPECT_EQ(TheAttrCacheFile().AttrSavedGeneration, saved);
}

TEST_F(AttrCacheFile, IsNotWrittenWhileThatOfTheLastRunIsTakenOver) {
  VolumeIndex& volume = AddNtfs(u"C:", kJournal);
  ASSERT_TRUE(WriteFileBytes(Path(), FileBytes()));
  TheAttrCacheFile().isLoaded = false;
  const uint64_t before = AttrCacheGeneration;
  Gate gate(volume.attrLock, Gate::Stops::kWriters);
  std::atomic<bool> isDone = false;
  std::thread load([&] {
    LoadAttrCache(Engine());
    isDone = true;
  });
  // A load that has read the file waits for the volume; one that has not reads what is there.
  for (int i = 0; i < 50 && !isDone; ++i) {
    SaveAttrCache(Engine());
    SaveAttrCacheAtEnd(Engine());
    SleepMs(1);
  }
  EXPECT_EQ(ReadFileBytes(Path()), FileBytes());
  gate.Open();
  load.join();
  EXPECT_TRUE(TheAttrCacheFile().isLoaded);
  EXPECT_TRUE(Holds(volume));
  EXPECT_EQ(AttrCacheGeneration, before + 1);
}

TEST_F(AttrCacheFile, CountsAsLookedForHoweverTheLookEnds) {
  for (const char* const bytes : {"", "no cache at all", "HCSV\1\0\0\0"}) {
    TheAttrCacheFile().isLoaded = false;
    if (*bytes != 0) {
      ASSERT_TRUE(WriteFileBytes(Path(), bytes));
    }
    LoadAttrCache(Engine());
    EXPECT_TRUE(TheAttrCacheFile().isLoaded) << bytes;
  }
}

// The program ends: the last save, then the volumes go, while jobs still run.
TEST_F(AttrCacheFile, IsLeftAloneByJobsBehindTheLastSave) {
  VolumeIndex& volume = AddNtfs(u"C:", kJournal);
  StoreAttr(volume, kFrn, kEntry);
  ShutdownRequested = true;
  SaveAttrCacheAtEnd(Engine());
  DropAllVolumes(Engine());
  SaveAttrCacheAfterSort(NextDueMs());
  SaveAttrCache(Engine());
  ASSERT_TRUE(WaitForBackgroundJobs(60'000));
  EXPECT_EQ(ReadFileBytes(Path()), FileBytes());
  ShutdownRequested = false;
}

TEST_F(AttrCacheFile, IsWrittenByTheLastSaveBehindThatOfAJob) {
  VolumeIndex& volume = AddNtfs(u"C:", kJournal);
  StoreAttr(volume, kFrn, {.size = 7, .modified = 7, .valid = true});
  Gate gate(Engine().volumesMutex, Gate::Stops::kAll);
  SaveAttrCacheAfterSort(NextDueMs());  // waits for the volumes
  ShutdownRequested = true;
  StoreAttr(volume, kFrn, kEntry);
  std::thread end([] { SaveAttrCacheAtEnd(Engine()); });
  gate.Open();
  end.join();
  EXPECT_EQ(ReadFileBytes(Path()), FileBytes());
  ASSERT_TRUE(WaitForBackgroundJobs(60'000));
  EXPECT_EQ(ReadFileBytes(Path()), FileBytes());
  ShutdownRequested = false;
}

TEST_F(AttrCacheFile, IsWrittenAfterASortOnceInThreeSeconds) {
  VolumeIndex& volume = AddNtfs(u"C:", kJournal);
  StoreAttr(volume, kFrn, kEntry);
  const uint64_t now = NextDueMs();
  for (const auto& [ms, isDue] : {std::pair{now, true}, {now + 3'000, false}, {now + 3'001, true}}) {
    RemoveFile(Path());
    SaveAttrCacheAfterSort(ms);
    ASSERT_TRUE(WaitForBackgroundJobs(60'000));
    EXPECT_EQ(HasFile(), isDue) << ms - now;
  }
}

// A build holds the volume for minutes, or for good where the disk dies.
TEST_F(AttrCacheFile, IsWrittenWhileAVolumeIsBeingBuilt) {
  VolumeIndex& built = AddNtfs(u"B:", 99);
  VolumeIndex& volume = AddNtfs(u"C:", kJournal);
  StoreAttr(volume, kFrn, kEntry);
  const BusyMark busy(built);
  Gate gate(built.indexLock, Gate::Stops::kAll);
  EXPECT_TRUE(RunWithin("save_at_end", {[] { SaveAttrCacheAtEnd(Engine()); }}, 60'000));
  gate.Open();
  ASSERT_TRUE(WaitForBackgroundJobs(60'000));
  const auto volumes = ReadAttrCacheBytes(Bytes(ReadFileBytes(Path()).value())).value();
  ASSERT_EQ(volumes.size(), 2u);
  EXPECT_TRUE(volumes[0].entries.empty());
  EXPECT_EQ(volumes[1].entries.size(), 1u);
}

TEST_F(AttrCacheFile, IsWrittenByOneJobAtATime) {
  VolumeIndex& volume = AddNtfs(u"C:", kJournal);
  StoreAttr(volume, kFrn, kEntry);
  Gate gate(Engine().volumesMutex, Gate::Stops::kAll);
  AutosaveAttrCacheAsync(Engine());  // waits for the volumes
  SaveAttrCacheAfterSort(NextDueMs());
  gate.Open();
  ASSERT_TRUE(WaitForBackgroundJobs(60'000));
  const std::u16string metrics = *ReadTextFile(GetConfigDirectory() + u"\\perf_metrics.log");
  EXPECT_EQ(metrics.find(u"cache_save"), metrics.rfind(u"cache_save")) << "one";
}

TEST_F(AttrCacheFile, IsMadeAtTheStartWhereThereIsNone) {
  VolumeIndex& volume = AddNtfs(u"C:", kJournal);
  StoreAttr(volume, kFrn, kEntry);
  WriteMissingAttrCache(Engine());
  EXPECT_EQ(ReadFileBytes(Path()), FileBytes());
  ASSERT_TRUE(WriteFileBytes(Path(), "something"));
  WriteMissingAttrCache(Engine());
  EXPECT_EQ(ReadFileBytes(Path()), "something");
}

TEST_F(AttrCacheFile, GivesItsEntriesToTheVolumeOfItsJournal) {
  VolumeIndex& other = AddNtfs(u"C:", 99);
  VolumeIndex& same = AddNtfs(u"C:", kJournal);
  ASSERT_TRUE(WriteFileBytes(Path(), FileBytes()));
  LoadAttrCache(Engine());
  EXPECT_FALSE(Holds(other));
  EXPECT_TRUE(Holds(same));
  same.attrs.clear();
  same.journalId = 98;
  LoadAttrCache(Engine());
  EXPECT_TRUE(Holds(other)) << "the first of the letter";
  EXPECT_FALSE(Holds(same));
}

TEST_F(AttrCacheFile, CutShortGivesWhatIsWhole) {
  VolumeIndex& volume = AddNtfs(u"C:", kJournal);
  for (size_t length = 0; length < FileBytes().size(); ++length) {
    volume.attrs.clear();
    ASSERT_TRUE(WriteFileBytes(Path(), FileBytes().substr(0, length)));
    LoadAttrCache(Engine());
    EXPECT_TRUE(volume.attrs.empty()) << length;
  }
}

TEST_F(AttrCacheFile, CountsAsAbsentWhereItCannotBeRead) {
  VolumeIndex& volume = AddNtfs(u"C:", kJournal);
  StoreAttr(volume, kFrn, kEntry);
  LoadAttrCache(Engine());
  ASSERT_TRUE(WriteFileBytes(Path(), "no cache at all"));
  LoadAttrCache(Engine());
  EXPECT_TRUE(Holds(volume));
}

}  // namespace
}  // namespace quilmark
