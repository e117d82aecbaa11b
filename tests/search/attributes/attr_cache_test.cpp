#include "search/attributes/attr_cache.h"

#include <gtest/gtest.h>

#include <functional>
#include <thread>

#include "config/attr_counters.h"
#include "index/build/ntfs_volume.h"
#include "index/engine/search_engine.h"
#include "platform/file_facts.h"
#include "platform/file_reference.h"
#include "support/gate.h"
#include "support/gives.h"
#include "support/mapped_drive.h"
#include "support/ntfs_builder.h"
#include "support/scratch_folder.h"
#include "support/volumes.h"

namespace quilmark {
namespace {

// A volume over a real folder: Q: with a file of 1,234 bytes.
class AttrCache : public testing::Test {
 protected:
  AttrCache() {
    folder.MakeFile("a.txt", std::string(1'234, 'x'));
    file = AddFile(*volume, u"a.txt", kRootFrnOfTests, kFrn);
    gone = AddFile(*volume, u"gone.txt", kRootFrnOfTests, kGoneFrn);
  }
  AttrEntry Ensure(uint32_t index, Insist insist = Insist::kNo) {
    AttrEntry entry;
    EnsureFileAttributes(volume.get(), index, entry, insist);
    return entry;
  }
  static constexpr uint64_t kFrn = 0x0003'0000'0000'0064, kGoneFrn = 0x0003'0000'0000'0065;

  ScratchFolder folder;
  MappedDrive drive{u'Q', folder.Path()};
  std::unique_ptr<VolumeIndex> volume = MakeTestVolume(u"Q:");
  uint32_t file = 0, gone = 0;
};

TEST_F(AttrCache, AsksTheDiskOnce) {
  const uint64_t reads = AttrCounters().diskReads;
  const AttrEntry entry = Ensure(file);
  EXPECT_TRUE(entry.valid);
  EXPECT_EQ(entry.size, 1'234);
  EXPECT_NE(entry.modified, 0u);
  Ensure(file);
  Ensure(file, Insist::kOnDisk);
  EXPECT_EQ(AttrCounters().diskReads, reads + 1);
}

TEST_F(AttrCache, EndsWithAnEntryForAFileThatIsGone) {
  const uint64_t reads = AttrCounters().diskReads;
  EXPECT_TRUE(Ensure(gone).valid);
  EXPECT_EQ(Ensure(gone).size, 0);
  EXPECT_EQ(AttrCounters().diskReads, reads + 1);
  Ensure(gone, Insist::kOnDisk);  // no dates: asked for again
  EXPECT_EQ(AttrCounters().diskReads, reads + 2);
}

TEST_F(AttrCache, TakesTheSizeOfAScanUnlessDatesAreWanted) {
  volume->mftSizes[kFrn] = {.logical = 99, .allocated = 512};
  const uint64_t reads = AttrCounters().diskReads;
  EXPECT_EQ(Ensure(file).size, 99);
  EXPECT_EQ(AttrCounters().diskReads, reads);
  EXPECT_EQ(Ensure(file, Insist::kOnDisk).size, 1'234);
  EXPECT_EQ(AttrCounters().diskReads, reads + 1);
}

TEST_F(AttrCache, FindsTheSizeOfAScanByTheBareRecordNumber) {
  volume->mftSizes[0x64] = {.logical = 77, .allocated = 512};
  MftSize size;
  EXPECT_TRUE(Gives(LookupMftSize(*volume, kFrn), size));
  EXPECT_EQ(size.logical, 77u);
  EXPECT_FALSE(Gives(LookupMftSize(*volume, kGoneFrn), size));
}

TEST_F(AttrCache, TakesTheSizeOfAScanForAFileThatCannotBeRead) {
  volume->mftSizes[kGoneFrn] = {.logical = 55, .allocated = 512};
  const AttrEntry entry = Ensure(gone, Insist::kOnDisk);
  EXPECT_EQ(entry.size, 55);
  EXPECT_EQ(entry.modified, 0u);
  EXPECT_TRUE(entry.valid);
}

TEST_F(AttrCache, NeverPutsAnEntryWithoutDatesOverAFullerOne) {
  StoreAttr(*volume, kGoneFrn, {.size = 5, .modified = 7, .created = 8, .valid = true});
  EXPECT_EQ(Ensure(gone, Insist::kOnDisk).size, 5);
}

TEST_F(AttrCache, LeavesTheOutputForNoRecordAndNoVolume) {
  AttrEntry entry{.size = 42};
  EnsureFileAttributes(volume.get(), 1'000, entry, Insist::kOnDisk);
  EnsureFileAttributes(nullptr, 0, entry, Insist::kOnDisk);
  volume->valid = false;
  EnsureFileAttributes(volume.get(), file, entry, Insist::kOnDisk);
  EXPECT_EQ(entry.size, 42);
  EXPECT_FALSE(entry.valid);
}

TEST_F(AttrCache, CountsHitsAndMisses) {
  const uint64_t hits = AttrCounters().hits, misses = AttrCounters().misses;
  AttrEntry entry;
  EXPECT_FALSE(Gives(LookupAttr(*volume, kFrn), entry));
  StoreAttr(*volume, kFrn, {.size = 1, .valid = true});
  EXPECT_TRUE(Gives(LookupAttr(*volume, kFrn), entry));
  EXPECT_TRUE(Gives(PeekAttr(*volume, kFrn), entry));
  EXPECT_EQ(AttrCounters().hits, hits + 1);
  EXPECT_EQ(AttrCounters().misses, misses + 1);
}

TEST_F(AttrCache, MeasuresHowLongItWaitsForItsLock) {
  const std::function<void()> uses[] = {
      [this] {
        AttrEntry entry;
        Gives(LookupAttr(*volume, kFrn), entry);
      },
      [this] { StoreAttr(*volume, kFrn, {.size = 1, .valid = true}); }};
  for (const auto& use : uses) {
    const uint64_t before = AttrCounters().lockWaitMicros;
    use();
    EXPECT_EQ(AttrCounters().lockWaitMicros, before) << "nobody has it";
    // The thread may come too late for the wait.
    EXPECT_TRUE(WaitUntil([&] {
      Gate gate(volume->attrLock, Gate::Stops::kAll);
      std::thread user(use);
      SleepMs(2);
      gate.Open();
      user.join();
      return AttrCounters().lockWaitMicros > before;
    }));
  }
}

TEST_F(AttrCache, MarksFolderTotalsWhenASizeChanges) {
  volume->folderSizesDirty = false;
  StoreAttr(*volume, kFrn, {.size = 0, .valid = true});
  EXPECT_FALSE(volume->folderSizesDirty);
  StoreAttr(*volume, kFrn, {.size = 9, .valid = true});
  EXPECT_TRUE(volume->folderSizesDirty);
  volume->folderSizesDirty = false;
  StoreAttr(*volume, kFrn, {.size = 9, .modified = 1, .valid = true});
  EXPECT_FALSE(volume->folderSizesDirty);
}

// Folders have no part in totals: looking at one must not cost another walk over the volume.
TEST_F(AttrCache, LeavesFolderTotalsWhenAFolderIsLookedAt) {
  folder.MakeFolder("d");
  const uint32_t index = AddFolder(*volume, u"d");
  volume->folderSizesDirty = false;
  EXPECT_NE(Ensure(index, Insist::kOnDisk).modified, 0u);
  EXPECT_FALSE(volume->folderSizesDirty);
}

TEST_F(AttrCache, KeepsNothingOfADeletedFile) {
  MarkDeleted(*volume, file);
  EXPECT_EQ(Ensure(file, Insist::kOnDisk).size, 1'234);
  EXPECT_TRUE(volume->attrs.empty());
}

TEST_F(AttrCache, TakesNoMoreThanTwoMillionEntries) {
  volume->attrs.reserve(kMostAttrEntries);
  for (uint64_t frn = 1; frn <= kMostAttrEntries; ++frn)
    volume->attrs.emplace(frn, AttrEntry{.valid = true});
  const uint64_t generation = AttrCacheGeneration;
  const uint64_t reads = AttrCounters().diskReads;
  EXPECT_EQ(Ensure(file).size, 1'234);
  EXPECT_EQ(Ensure(file).size, 1'234);
  EXPECT_EQ(AttrCounters().diskReads, reads + 2);
  EXPECT_EQ(AttrCacheGeneration, generation);
  StoreAttr(*volume, 1, {.size = 3, .valid = true});  // an update is always allowed
  EXPECT_EQ(AttrCacheGeneration, generation + 1);
}

// A volume that is read by its records; one of them has no dates.
class AttrCacheOfImage : public testing::Test {
 protected:
  AttrCacheOfImage() {
    const auto file = [](std::u16string_view name, FileTime created, FileTime modified) {
      return RecordBuilder()
          .StandardInformation(0x20)
          .Dates(created, modified)
          .FileName(kRootFrn, name)
          .Resident(kData, {}, Bytes(600))
          .Finish({});
    };
    builder.Record(kFile, file(u"file", 2, 3))
        .Record(kTorn, file(u"torn", 2, 3))
        .Record(kUndated, file(u"undated", 0, 0));
    folder.MakeFile("disk.img", builder.Image());
    EXPECT_TRUE(BuildNtfsVolume(volume, u"Q:"));
  }
  // Of the file that has that record.
  AttrEntry Ensure(uint64_t record, Insist insist) {
    AttrEntry entry;
    uint32_t index = 0;
    while (index < volume.records.size() && RecordNumberOf(volume.records[index].frn) != record) ++index;
    EnsureFileAttributes(&volume, index, entry, insist);
    return entry;
  }
  static constexpr uint64_t kRootFrn = MakeReference(5, 1), kFile = 30, kTorn = 31, kUndated = 32;

  NtfsVolumeBuilder builder;
  ScratchFolder folder;
  MappedDrive drive{u'Q', folder.PathOf(u"disk.img")};
  VolumeIndex volume;
};

TEST_F(AttrCacheOfImage, TakesSizeAndDatesFromTheRecordOnce) {
  const uint64_t reads = AttrCounters().diskReads;
  const AttrEntry entry = Ensure(kFile, Insist::kNo);
  EXPECT_TRUE(entry.valid);
  EXPECT_EQ(entry.size, 600);
  EXPECT_EQ(entry.created, 2u);
  EXPECT_EQ(entry.modified, 3u);
  Ensure(kFile, Insist::kOnDisk);
  EXPECT_EQ(AttrCounters().diskReads, reads + 1);
}

TEST_F(AttrCacheOfImage, AFileWithoutDatesHasItsSize) {
  const AttrEntry entry = Ensure(kUndated, Insist::kOnDisk);
  EXPECT_TRUE(entry.valid);
  EXPECT_EQ(entry.size, 600);
  EXPECT_EQ(entry.modified, 0u);
}

TEST_F(AttrCacheOfImage, EndsWithAnEntryForARecordThatIsTornMeanwhile) {
  auto torn = RecordBuilder().StandardInformation().FileName(kRootFrn, u"torn").Finish({});
  torn[510] ^= std::byte{1};
  folder.MakeFile("disk.img", builder.Record(kTorn, torn).Image());
  const AttrEntry entry = Ensure(kTorn, Insist::kOnDisk);
  EXPECT_TRUE(entry.valid);
  EXPECT_EQ(entry.size, 0);
  EXPECT_EQ(entry.modified, 0u);
  EXPECT_EQ(Ensure(kFile, Insist::kOnDisk).size, 600);
}

TEST_F(AttrCacheOfImage, TakesNothingOfTheFileThatHasTheRecordNow) {
  const Bytes other = RecordBuilder()
                          .StandardInformation()
                          .Dates(8, 9)
                          .FileName(kRootFrn, u"other")
                          .Resident(kData, {}, Bytes(7))
                          .Finish({.sequence = 2});
  folder.MakeFile("disk.img", builder.Record(kFile, other).Image());
  EXPECT_EQ(Ensure(kFile, Insist::kOnDisk).size, 0);
  EXPECT_EQ(Ensure(kFile, Insist::kOnDisk).modified, 0u);
}

TEST_F(AttrCacheOfImage, EndsWithAnEntryWhereTheDeviceIsClosed) {
  CloseVolume(volume);
  const AttrEntry entry = Ensure(kFile, Insist::kOnDisk);
  EXPECT_TRUE(entry.valid);
  EXPECT_EQ(entry.modified, 0u);
}

TEST(FileFacts, TellSizeTimesAndKind) {
  const ScratchFolder folder;
  folder.MakeFile("a.txt", "12345");
  const auto file = ReadFileFacts(folder.PathOf(u"a.txt"));
  ASSERT_TRUE(file.has_value());
  EXPECT_EQ(file->size, 5u);
  EXPECT_FALSE(file->isDirectory);
  constexpr FileTime kHour = 3'600 * kFileTimePerSecond;
  EXPECT_GT(file->modified + kHour, NowFileTime());
  EXPECT_GT(file->created + kHour, NowFileTime());
  EXPECT_TRUE(ReadFileFacts(folder.Path())->isDirectory);
  EXPECT_EQ(ReadFileFacts(folder.Path())->size, 0u);
  EXPECT_FALSE(ReadFileFacts(folder.PathOf(u"none")).has_value());
}

}  // namespace
}  // namespace quilmark
