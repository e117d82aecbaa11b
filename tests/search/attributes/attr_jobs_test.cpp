#include "search/attributes/attr_jobs.h"

#include <gtest/gtest.h>

#include <functional>
#include <mutex>
#include <thread>

#include "config/attr_counters.h"
#include "config/config_directory.h"
#include "config/scratch_config.h"
#include "index/follow/usn_monitor.h"
#include "platform/background.h"
#include "platform/files.h"
#include "platform/usn_record.h"
#include "search/attributes/attr_cache.h"
#include "search/attributes/attr_cache_file.h"
#include "search/attributes/folder_sizes.h"
#include "support/gate.h"
#include "support/gives.h"
#include "support/held_job.h"
#include "support/mapped_drive.h"
#include "support/scratch_folder.h"
#include "support/scripted_device.h"
#include "support/search_harness.h"
#include "support/volumes.h"

namespace quilmark {
namespace {

// Q: with a folder "d" and three files of 10, 20 and 30 bytes, the last one in the folder.
class AttrJobs : public testing::Test {
 protected:
  AttrJobs() {
    folder.MakeFile("a", std::string(10, 'x'));
    folder.MakeFile("b", std::string(20, 'x'));
    folder.MakeFile("d/c", std::string(30, 'x'));
    a = AddFile(volume, u"a", kRootFrnOfTests, 101);
    b = AddFile(volume, u"b", kRootFrnOfTests, 102);
    d = AddFolder(volume, u"d", kRootFrnOfTests, 103);
    c = AddFile(volume, u"c", 103, 104);
  }
  std::shared_ptr<const ResultSet> Rows(std::initializer_list<uint32_t> indices) {
    auto rows = std::make_shared<ResultSet>();
    for (const uint32_t index : indices) rows->push_back({&volume, index});
    return rows;
  }
  void Hydrate(std::shared_ptr<const ResultSet> rows, RowRange range) {
    HydrateRowsAsync(std::move(rows), range);
    ASSERT_TRUE(WaitForBackgroundJobs(60'000));
  }
  // Until the first row's file has been read.
  void HydrateAndWait(std::shared_ptr<const ResultSet> rows) {
    const uint64_t reads = AttrCounters().diskReads;
    const RowRange all = {0, rows->size()};
    HydrateRowsAsync(std::move(rows), all);
    ASSERT_TRUE(WaitUntil([reads] { return AttrCounters().diskReads > reads; }));
  }
  bool Knows(uint64_t frn) {
    AttrEntry entry;
    return Gives(PeekAttr(volume, frn), entry);
  }
  bool HasFile() { return IsExistingPath(GetConfigDirectory() + u"\\attrcache.v1.bin"); }
  void Autosave() {
    AutosaveAttrCacheAsync(Engine());
    ASSERT_TRUE(WaitForBackgroundJobs(60'000));
  }

  ScratchConfig config;
  ScratchFolder folder;
  MappedDrive drive{u'Q', folder.Path()};
  SearchHarness search;
  VolumeIndex& volume = *AddVolume(Engine(), MakeTestVolume(u"Q:"));
  uint32_t a = 0, b = 0, c = 0, d = 0;
};

TEST_F(AttrJobs, HydrationFetchesTheRowsInView) {
  Hydrate(Rows({a, b, c, 1'000'000}), {1, 4});
  EXPECT_FALSE(Knows(101));
  EXPECT_TRUE(Knows(102));
  EXPECT_TRUE(Knows(104));
  const PostedMessage message = search.Next();
  EXPECT_EQ(message.message, WM_ATTRS_UPDATED);
  EXPECT_EQ(message.first, TheSearch().hydrationGeneration.Number());
  EXPECT_TRUE(search.IsQuiet());
}

TEST_F(AttrJobs, HydrationSaysNothingWhereNothingIsNew) {
  Hydrate(Rows({a, b}), {0, 2});
  search.Next();
  Hydrate(Rows({a, b}), {0, 2});
  Hydrate(Rows({a, b}), {2, 2});
  Hydrate(Rows({}), {0, 5});
  EXPECT_TRUE(search.IsQuiet());
}

TEST_F(AttrJobs, HydrationOfAFolderAddsUpWhatLiesBelow) {
  Hydrate(Rows({c}), {0, 1});
  uint64_t total = 0;
  EXPECT_FALSE(Gives(GetFolderSize(volume, 103, IfDirty::kLeave), total));
  Hydrate(Rows({d}), {0, 1});
  ASSERT_TRUE(Gives(GetFolderSize(volume, 103, IfDirty::kLeave), total));
  EXPECT_EQ(total, 30u);
  EXPECT_FALSE(volume.folderSizesDirty);
}

TEST_F(AttrJobs, HydrationEndsWhereItIsOutOfDate) {
  const std::function<void()> ends[] = {[] { SupersedeSearch(); },
                                        [] { TheSearch().hydrationGeneration.Supersede(); },
                                        [] { ShutdownRequested = true; }};
  for (const auto& end : ends) {
    volume.attrs.clear();
    Gate gate(volume.attrLock, Gate::Stops::kWriters);
    HydrateAndWait(Rows({a, b, d}));
    end();
    gate.Open();
    EXPECT_TRUE(search.IsQuiet());
    ShutdownRequested = false;
    EXPECT_TRUE(Knows(101)) << "was under way";
    EXPECT_FALSE(Knows(102));
  }
}

TEST_F(AttrJobs, HydrationThatIsRefusedIsAskedForAnew) {
  Gate gate(volume.attrLock, Gate::Stops::kWriters);
  HydrateAndWait(Rows({a}));
  const uint64_t token = TheSearch().hydrationGeneration.Number();
  HydrateRowsAsync(Rows({b}), {0, 1});
  HydrateRowsAsync(Rows({b}), {0, 1});
  EXPECT_EQ(TheSearch().hydrationGeneration.Number(), token);
  gate.Open();
  ASSERT_TRUE(WaitForBackgroundJobs(60'000));
  for (int i = 0; i < 2; ++i) {  // of what it found, and for whoever was refused
    const PostedMessage message = search.Next();
    EXPECT_EQ(message.message, WM_ATTRS_UPDATED);
    EXPECT_EQ(message.first, token);
  }
  EXPECT_TRUE(search.IsQuiet());
  EXPECT_FALSE(Knows(102));
  Hydrate(Rows({b}), {0, 1});
  EXPECT_TRUE(Knows(102));
  search.Next();
  EXPECT_TRUE(search.IsQuiet()) << "asked for once";
}

// A request comes through or is refused and asked for anew, however close it comes to the end of
// another.
TEST_F(AttrJobs, NoHydrationIsLost) {
  Hydrate(Rows({a}), {0, 1});
  search.Next();
  for (int round = 0; round < 500; ++round) {
    {
      const std::scoped_lock lock(volume.attrLock);
      volume.attrs.erase(102);
    }
    HydrateRowsAsync(Rows({a}), {0, 1});  // knows all and says nothing of itself
    for (int pause = round % 50; pause > 0; --pause) std::this_thread::yield();
    HydrateRowsAsync(Rows({b}), {0, 1});
    ASSERT_TRUE(WaitForBackgroundJobs(60'000));
    ASSERT_TRUE(search.queue.Take(0).has_value()) << round;
    while (search.queue.Take(0)) {
    }
  }
}

TEST_F(AttrJobs, HydrationEndsWithTheProgram) {
  ShutdownRequested = true;
  Hydrate(Rows({a}), {0, 1});
  ShutdownRequested = false;
  EXPECT_FALSE(Knows(101));
}

TEST_F(AttrJobs, ARenamedFileLosesItsEntryAndGetsAFreshOneWhenShown) {
  Hydrate(Rows({a}), {0, 1});
  SaveAttrCache(Engine());
  folder.MakeFile("a2", std::string(77, 'x'));
  UsnBlockBuilder block(5);
  block.Record(101, kRootFrnOfTests, u"a2", kUsnReasonRenameNewName);
  ApplyJournalBlock(volume, block);
  EXPECT_FALSE(Knows(101));
  Hydrate(Rows({a}), {0, 1});
  AttrEntry entry;
  ASSERT_TRUE(Gives(PeekAttr(volume, 101), entry));
  EXPECT_EQ(entry.size, 77);
}

TEST_F(AttrJobs, PrewarmFillsTheFirstRecordsOfVolumesThatHaveNone) {
  for (int i = 0; i < 3'000; ++i) AddFile(volume, u"more");
  VolumeIndex& warm = *AddVolume(Engine(), MakeTestVolume(u"R:"));
  AddFile(warm, u"x", kRootFrnOfTests, 500);
  StoreAttr(warm, 7, {.size = 1, .valid = true});
  PrewarmAttrCacheAsync(Engine());
  ASSERT_TRUE(WaitForBackgroundJobs(60'000));
  EXPECT_EQ(volume.attrs.size(), 3'000u);
  EXPECT_TRUE(Knows(104));
  EXPECT_FALSE(Knows(volume.records[3'000].frn));
  EXPECT_EQ(warm.attrs.size(), 1u);
  EXPECT_FALSE(Engine().prewarming.IsRunning());
}

TEST_F(AttrJobs, PrewarmTakesTheVolumesThatWereColdWhenItBegan) {
  VolumeIndex& next = *AddVolume(Engine(), MakeTestVolume(u"R:"));
  AddFile(next, u"x", kRootFrnOfTests, 500);
  const uint64_t reads = AttrCounters().diskReads;
  Gate gate(volume.attrLock, Gate::Stops::kWriters);
  PrewarmAttrCacheAsync(Engine());
  ASSERT_TRUE(WaitUntil([reads] { return AttrCounters().diskReads > reads; }));
  StoreAttr(next, kRootFrnOfTests, {.size = 0, .modified = 1, .valid = true});  // a row is shown
  gate.Open();
  ASSERT_TRUE(WaitForBackgroundJobs(60'000));
  AttrEntry entry;
  EXPECT_TRUE(Gives(PeekAttr(next, 500), entry));
}

TEST_F(AttrJobs, PrewarmEndsWithTheProgram) {
  VolumeIndex& next = *AddVolume(Engine(), MakeTestVolume(u"R:"));
  const uint64_t reads = AttrCounters().diskReads;
  Gate gate(volume.attrLock, Gate::Stops::kWriters);
  PrewarmAttrCacheAsync(Engine());
  ASSERT_TRUE(WaitUntil([reads] { return AttrCounters().diskReads > reads; }));
  EXPECT_TRUE(Engine().prewarming.IsRunning());
  ShutdownRequested = true;
  gate.Open();
  ASSERT_TRUE(WaitForBackgroundJobs(60'000));
  ShutdownRequested = false;
  EXPECT_EQ(volume.attrs.size(), 1u) << "the one that was under way";
  EXPECT_TRUE(next.attrs.empty());
  EXPECT_FALSE(Engine().prewarming.IsRunning());
}

TEST_F(AttrJobs, PrewarmRunsOnceAtATime) {
  HeldJob running(Engine().prewarming);
  PrewarmAttrCacheAsync(Engine());
  EXPECT_TRUE(Engine().prewarming.TakeAsked()) << "refused";
  running.End();
  ASSERT_TRUE(WaitForBackgroundJobs(60'000));
  EXPECT_TRUE(volume.attrs.empty());
}

TEST_F(AttrJobs, AutosaveWritesOnlyWhatIsNew) {
  TheAttrCacheFile().AttrSavedGeneration = AttrCacheGeneration.load();
  Autosave();
  EXPECT_FALSE(HasFile());
  StoreAttr(volume, 101, {.size = 10, .modified = 1, .valid = true});
  Autosave();
  EXPECT_TRUE(HasFile());
  EXPECT_EQ(TheAttrCacheFile().AttrSavedGeneration, AttrCacheGeneration);
}

TEST_F(AttrJobs, AutosaveLeavesTheFileToTheEnd) {
  StoreAttr(volume, 101, {.size = 10, .modified = 1, .valid = true});
  ShutdownRequested = true;
  Autosave();
  ShutdownRequested = false;
  EXPECT_FALSE(HasFile());
}

}  // namespace
}  // namespace quilmark
