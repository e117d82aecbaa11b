#include "shell/actions/recent_opens.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <thread>

#include "config/config_directory.h"
#include "platform/files.h"
#include "platform/text_file.h"
#include "shell/window_harness.h"
#include "support/gate.h"

namespace quilmark {
namespace {

using Paths = std::vector<std::u16string>;

std::u16string FilePath() { return ConfigPath(u"recent.ini"); }
void WriteRecentIni(std::u16string_view text) { ASSERT_TRUE(WriteTextFile(FilePath(), text)); }

Paths PathsOf(const RecentOpens& list) {
  Paths paths;
  for (const RecentOpenEntry& entry : list.Entries()) paths.push_back(entry.path);
  return paths;
}

// What the next start would load.
Paths SavedPaths() {
  RecentOpens list;
  list.Load();
  return PathsOf(list);
}

// Q: with three files, in the engine of the program.
class RecentOpensTest : public testing::Test {
 protected:
  MatchItem Item(int file) { return {&volume, records[static_cast<size_t>(file)]}; }
  std::vector<MatchItem> Items(std::initializer_list<int> files) {
    std::vector<MatchItem> items;
    for (const int file : files) items.push_back(Item(file));
    return items;
  }

  WindowHarness harness;
  VolumeIndex& volume = *AddVolume(Engine(), MakeTestVolume(u"Q:"));
  std::vector<uint32_t> records = {AddFile(volume, u"zero.txt"), AddFile(volume, u"one.txt"),
                                   AddFile(volume, u"two.txt")};
};

TEST_F(RecentOpensTest, TheLatestOpenStandsFirst) {
  for (const int file : {0, 1, 2, 0}) RecordRecentOpen(Item(file));
  EXPECT_EQ(PathsOf(TheRecentOpens()), (Paths{u"Q:\\zero.txt", u"Q:\\two.txt", u"Q:\\one.txt"}));
  EXPECT_EQ(CollectRecentItems(), Items({0, 2, 1}));
  EXPECT_EQ(SavedPaths(), (Paths{u"Q:\\zero.txt", u"Q:\\two.txt", u"Q:\\one.txt"}));
}

TEST_F(RecentOpensTest, AFileThatIsGoneIsNotRecorded) {
  MarkDeleted(volume, records[0]);
  RecordRecentOpen(Item(0));
  RecordRecentOpen({});
  RecordRecentOpen({&volume, 1'000});
  EXPECT_TRUE(PathsOf(TheRecentOpens()).empty());
  EXPECT_TRUE(IsMissingPath(FilePath()));
}

TEST_F(RecentOpensTest, TheHundredAndFirstFileDropsTheOldest) {
  for (int i = 0; i < 101; ++i) {
    RecordRecentOpen({&volume, AddFile(volume, u"file " + std::u16string(1, char16_t(0x4E00 + i)))});
  }
  const Paths paths = PathsOf(TheRecentOpens());
  ASSERT_EQ(paths.size(), 100u);
  EXPECT_EQ(paths.front(), u"Q:\\file \u4E64");
  EXPECT_EQ(paths.back(), u"Q:\\file \u4E01");
  EXPECT_EQ(SavedPaths(), paths);
}

TEST_F(RecentOpensTest, AnOpenAfterARestartFindsItsFormerEntryByThePath) {
  WriteRecentIni(u"7\tQ:\\one.txt\n6\tq:/ZERO.txt\n5\tX:\\gone\n");
  TheRecentOpens().Load();
  RecordRecentOpen(Item(0));
  EXPECT_EQ(PathsOf(TheRecentOpens()), (Paths{u"Q:\\zero.txt", u"Q:\\one.txt", u"X:\\gone"}));
}

TEST_F(RecentOpensTest, AFileThatWasRenamedElsewhereKeepsOneEntry) {
  RecordRecentOpen(Item(0));
  RenameRecord(volume, records[0], kRootFrnOfTests, u"other.txt");
  EXPECT_EQ(CollectRecentItems(), Items({0}));
  RecordRecentOpen(Item(0));
  EXPECT_EQ(PathsOf(TheRecentOpens()), Paths{u"Q:\\other.txt"});
}

TEST_F(RecentOpensTest, AnEntryFromTheFileFindsItsRecordOnce) {
  WriteRecentIni(u"7\tq:/One.TXT\n6\tQ:\\missing\n5\tQ:\\zero.txt\n");
  TheRecentOpens().Load();
  EXPECT_EQ(CollectRecentItems(), Items({1, 0}));
  const auto entries = TheRecentOpens().Entries();
  ASSERT_EQ(entries.size(), 3u);
  EXPECT_EQ(entries[0].volume, &volume);
  EXPECT_EQ(entries[0].record, records[1]);
  EXPECT_EQ(entries[1].volume, nullptr);
}

TEST_F(RecentOpensTest, AnEntryOfAnUnpluggedDiskComesBackWithIt) {
  RecordRecentOpen(Item(0));
  volume.valid = false;
  EXPECT_TRUE(CollectRecentItems().empty());
  EXPECT_EQ(PathsOf(TheRecentOpens()), Paths{u"Q:\\zero.txt"});
  volume.valid = true;
  EXPECT_EQ(CollectRecentItems(), Items({0}));
}

// The numbers of a volume that was built again mean other files.
TEST_F(RecentOpensTest, AVolumeThatWasBuiltAgainIsLookedThrough) {
  RecordRecentOpen(Item(0));
  {
    const std::scoped_lock lock(volume.indexLock);
    ResetVolumeTables(volume);
  }
  AddFile(volume, u"new.txt");
  AddFile(volume, u"other.txt");
  EXPECT_TRUE(CollectRecentItems().empty());
  AddFile(volume, u"zero.txt", volume.records[AddFolder(volume, u"folder")].frn);
  EXPECT_TRUE(CollectRecentItems().empty());
  records[0] = AddFile(volume, u"zero.txt");
  EXPECT_EQ(CollectRecentItems(), Items({0}));
}

TEST_F(RecentOpensTest, ADeletedFileStaysInTheListOnly) {
  RecordRecentOpen(Item(0));
  MarkDeleted(volume, records[0]);
  EXPECT_TRUE(CollectRecentItems().empty());
  EXPECT_EQ(PathsOf(TheRecentOpens()), Paths{u"Q:\\zero.txt"});
}

TEST_F(RecentOpensTest, ClearingForgetsTheFileToo) {
  WriteRecentIni(u"7\tQ:\\two.txt\n");
  RecordRecentOpen(Item(0));
  ClearRecentOpens();
  EXPECT_TRUE(PathsOf(TheRecentOpens()).empty());
  EXPECT_TRUE(SavedPaths().empty());
  RecordRecentOpen(Item(1));
  EXPECT_EQ(SavedPaths(), Paths{u"Q:\\one.txt"});
}

TEST_F(RecentOpensTest, ClearingBeforeTheLoadCounts) {
  WriteRecentIni(u"7\tQ:\\two.txt\n");
  ClearRecentOpens();
  TheRecentOpens().Load();
  EXPECT_TRUE(PathsOf(TheRecentOpens()).empty());
}

TEST_F(RecentOpensTest, AnOpenBeforeTheLoadLosesNothingOfTheFile) {
  WriteRecentIni(u"7\tQ:\\two.txt\n6\tQ:\\zero.txt\n");
  RecordRecentOpen(Item(0));
  TheRecentOpens().Load();
  EXPECT_EQ(PathsOf(TheRecentOpens()), (Paths{u"Q:\\zero.txt", u"Q:\\two.txt"}));
  EXPECT_EQ(SavedPaths(), (Paths{u"Q:\\zero.txt", u"Q:\\two.txt"}));
}

TEST_F(RecentOpensTest, ARenameTakesThePathAlong) {
  RecordRecentOpen(Item(0));
  UpdateRecentAfterRename(u"q:/zero.TXT", u"Q:\\null.txt");
  EXPECT_EQ(SavedPaths(), Paths{u"Q:\\null.txt"});
  UpdateRecentAfterRename(u"Q:\\zero.txt", u"Q:\\other.txt");
  EXPECT_EQ(SavedPaths(), Paths{u"Q:\\null.txt"});
}

// Two copies of the program, as of a user who has two sessions.
TEST_F(RecentOpensTest, WhatAnotherCopyWroteIsKept) {
  RecentOpens one, other;
  one.Load();
  other.Load();
  one.Record({.openedAt = 1, .path = u"Q:\\one.txt"});
  other.Record({.openedAt = 2, .path = u"Q:\\two.txt"});
  one.Record({.openedAt = 3, .path = u"Q:\\three.txt"});
  EXPECT_EQ(SavedPaths(), (Paths{u"Q:\\three.txt", u"Q:\\one.txt", u"Q:\\two.txt"}));
  other.Rename(u"Q:\\two.txt", u"Q:\\2.txt");
  EXPECT_EQ(SavedPaths(), (Paths{u"Q:\\2.txt", u"Q:\\one.txt", u"Q:\\three.txt"}));
}

TEST_F(RecentOpensTest, WhatAnotherCopyClearedIsGoneUnlessItWasOpenedSince) {
  RecentOpens one, other;
  one.Record({.openedAt = 1, .path = u"Q:\\one.txt"});
  one.Record({.openedAt = 2, .path = u"Q:\\two.txt"});
  other.Load();
  other.Clear();
  one.Record({.openedAt = 3, .path = u"Q:\\one.txt"});
  EXPECT_EQ(SavedPaths(), Paths{u"Q:\\one.txt"});
  EXPECT_EQ(PathsOf(one), Paths{u"Q:\\one.txt"});
}

TEST_F(RecentOpensTest, AFileThatIsGoneIsWrittenAgain) {
  RecentOpens list;
  list.Record({.openedAt = 1, .path = u"Q:\\one.txt"});
  ASSERT_TRUE(RemoveFile(FilePath()));
  list.Record({.openedAt = 2, .path = u"Q:\\two.txt"});
  EXPECT_EQ(SavedPaths(), (Paths{u"Q:\\two.txt", u"Q:\\one.txt"}));
}

// The journal calls a recycled file by its name in the bin, and its record lives.
TEST_F(RecentOpensTest, ARecycledFileDoesNotComeBackUnderItsNameInTheBin) {
  const MatchItem folder = {&volume, AddFolder(volume, u"folder", kRootFrnOfTests, 90)};
  const MatchItem inside = {&volume, AddFile(volume, u"inside.txt", 90, 91)};
  RecordRecentOpen(Item(0));
  RecordRecentOpen(Item(1));
  RecordRecentOpen(folder);
  RecordRecentOpen(inside);
  TheRecentOpens().ForgetPlaces({u"q:\\ZERO.txt", u"Q:\\folder"});
  RenameRecord(volume, records[0], kRootFrnOfTests, u"$R1.txt");
  RenameRecord(volume, folder.index, kRootFrnOfTests, u"$R2");
  EXPECT_EQ(CollectRecentItems(), Items({1}));
  RenameRecord(volume, folder.index, kRootFrnOfTests, u"folder");  // taken out of the bin
  EXPECT_EQ(CollectRecentItems(), (std::vector<MatchItem>{inside, folder, Item(1)}));
}

// The file of one entry gets the path of another one's, which is gone.
TEST_F(RecentOpensTest, AFileHasOneEntryWhateverItWasCalled) {
  RecordRecentOpen(Item(0));
  RecordRecentOpen(Item(1));
  MarkDeleted(volume, records[1]);
  RenameRecord(volume, records[0], kRootFrnOfTests, u"one.txt");
  RecordRecentOpen(Item(0));
  EXPECT_EQ(PathsOf(TheRecentOpens()), Paths{u"Q:\\one.txt"});
}

TEST_F(RecentOpensTest, ARenameTakesThePlaceOfAnEntryWithThatPath) {
  RecordRecentOpen(Item(0));
  RecordRecentOpen(Item(1));
  UpdateRecentAfterRename(u"Q:\\zero.txt", u"Q:\\one.txt");
  EXPECT_EQ(PathsOf(TheRecentOpens()), Paths{u"Q:\\one.txt"});
  UpdateRecentAfterRename(u"Q:\\one.txt", u"Q:\\ONE.txt");
  EXPECT_EQ(PathsOf(TheRecentOpens()), Paths{u"Q:\\ONE.txt"});
}

// The look-up of a job has seen the file before it went.
TEST_F(RecentOpensTest, ALookUpDuringADeletionGivesNothingBack) {
  WriteRecentIni(u"7\tQ:\\zero.txt\n6\tR:\\far\n");
  TheRecentOpens().Load();
  VolumeIndex& other = *AddVolume(Engine(), MakeTestVolume(u"R:"));
  Gate gate(other.indexLock, Gate::Stops::kAll);
  std::thread job([] { (void)CollectRecentItems(); });
  {
    const std::scoped_lock writer(volume.indexLock);
    MarkDeleted(volume, records[0]);
  }
  TheRecentOpens().ForgetPlaces({u"Q:\\zero.txt"});
  gate.Open();
  job.join();
  RenameRecord(volume, records[0], kRootFrnOfTests, u"$R1.txt");
  EXPECT_TRUE(CollectRecentItems().empty());
}

TEST_F(RecentOpensTest, AFileThatCannotBeReadOrWrittenIsIgnored) {
  ASSERT_TRUE(MakeFolder(FilePath()));
  RecentOpens list;
  list.Load();
  list.Record({.openedAt = 1, .path = u"q:/ZERO.txt"});
  EXPECT_EQ(list.Collect(Engine()), Items({0}));
  ASSERT_TRUE(std::filesystem::remove(harness.config.folder.HostPath() / "recent.ini"));
}

// Where the volume is written to all the time, and a job waits for it, files are opened as ever.
TEST_F(RecentOpensTest, AnOpenWaitsForNoLookup) {
  WriteRecentIni(u"7\tQ:\\missing\n");
  TheRecentOpens().Load();
  VolumeIndex& other = *AddVolume(Engine(), MakeTestVolume(u"R:"));
  const MatchItem item = {&other, AddFile(other, u"opened.txt")};
  Gate gate(volume.indexLock, Gate::Stops::kAll);
  std::vector<MatchItem> found;
  std::thread job([&found] { found = CollectRecentItems(); });
  RecordRecentOpen(item);
  EXPECT_EQ(PathsOf(TheRecentOpens()), (Paths{u"R:\\opened.txt", u"Q:\\missing"}));
  gate.Open();
  job.join();
}

TEST_F(RecentOpensTest, JobsAndOpensMixInNothing) {
  std::thread job([] {
    for (int i = 0; i < 50; ++i) {
      (void)CollectRecentItems();
      TheRecentOpens().Save();
    }
  });
  for (int i = 0; i < 50; ++i) RecordRecentOpen(Item(i % 3));
  job.join();
  EXPECT_EQ(SavedPaths(), (Paths{u"Q:\\one.txt", u"Q:\\zero.txt", u"Q:\\two.txt"}));
}

TEST_F(RecentOpensTest, LoadingTellsTheWindow) {
  WriteRecentIni(u"7\tQ:\\two.txt\n");
  LoadRecentOpensAsync();
  EXPECT_EQ(harness.search.Next().message, WM_RECENT_LOADED);
  EXPECT_EQ(PathsOf(TheRecentOpens()), Paths{u"Q:\\two.txt"});
}

TEST_F(RecentOpensTest, LoadingTellsNobodyDuringTheEnd) {
  ShutdownRequested = true;
  LoadRecentOpensAsync();
  EXPECT_TRUE(harness.search.IsQuiet());
}

TEST_F(RecentOpensTest, AnEmptyBoxShowsThem) {
  TheSearch().hooks.recentResults = [] { return std::make_shared<ResultSet>(CollectRecentItems()); };
  Engine().ready = true;
  RecordRecentOpen(Item(1));
  harness.window.texts[kQueryBox] = u"  ";
  RefreshRecentViewIfNeeded();
  EXPECT_EQ(harness.search.Next().message, WM_SEARCH_RESULTS);
  EXPECT_EQ(*HeldResults(), Items({1}));
}

TEST_F(RecentOpensTest, ATextInTheBoxAndTheWholeIndexAreLeftAlone) {
  const uint64_t before = SearchNumber();
  harness.window.texts[kQueryBox] = u"needle";
  RefreshRecentViewIfNeeded();
  harness.window.texts[kQueryBox] = u"";
  TheSearch().SuppressRecentView = true;
  RefreshRecentViewIfNeeded();
  EXPECT_EQ(SearchNumber(), before);
  EXPECT_TRUE(harness.search.IsQuiet());
}

}  // namespace
}  // namespace quilmark
