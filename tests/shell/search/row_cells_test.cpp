#include <gtest/gtest.h>

#include "config/attr_counters.h"
#include "index/follow/data_changes.h"
#include "platform/background.h"
#include "search/attributes/attr_cache.h"
#include "search/attributes/attr_jobs.h"
#include "search/results/search_session.h"
#include "shell/list/cell_text.h"
#include "shell/search/row_cells.h"
#include "support/mapped_drive.h"
#include "support/scratch_folder.h"
#include "support/search_harness.h"
#include "support/volumes.h"

namespace quilmark {
namespace {

// Q: with a file, a folder, a file that is not on the disk any more, and a record that was deleted.
class ListAtRest : public testing::Test {
 protected:
  ListAtRest() {
    folder_.MakeFile("there", std::string(10, 'x'));
    folder_.MakeFile("docs/below", std::string(30, 'x'));
    there_ = AddFile(volume_, u"there");
    unreadable_ = AddFile(volume_, u"nowhere");
    docs_ = AddFolder(volume_, u"docs");
    deleted_ = AddFile(volume_, u"deleted");
    MarkDeleted(volume_, deleted_);
    deletedFolder_ = AddFolder(volume_, u"deleted too");
    MarkDeleted(volume_, deletedFolder_);
  }

  void Show(std::initializer_list<uint32_t> indices) {
    auto rows = std::make_shared<ResultSet>();
    for (const uint32_t index : indices) rows->push_back({&volume_, index});
    rows_ = std::move(rows);
  }

  // As the window does: what is missing is asked for, and what came is painted.
  int PaintsUntilRest() {
    constexpr int kMost = 20;
    for (int paints = 1; paints < kMost; ++paints) {
      bool isMissing = false;
      for (const MatchItem& hit : *rows_) isMissing = CellsOfRow(hit).isMissing || isMissing;
      if (isMissing) HydrateRowsAsync(rows_, {0, rows_->size()});
      if (!WaitForBackgroundJobs(60'000)) return kMost;
      if (!harness_.queue.Take(0)) return paints;
      while (harness_.queue.Take(0)) {
      }
    }
    return kMost;
  }

  // What one more paint costs.
  void ExpectNothingIsAsked() {
    const uint64_t reads = AttrCounters().diskReads, jobs = TheSearch().hydrationGeneration.Number();
    const uint64_t entries = AttrCacheGeneration;
    EXPECT_EQ(PaintsUntilRest(), 1);
    EXPECT_EQ(AttrCounters().diskReads, reads);
    EXPECT_EQ(TheSearch().hydrationGeneration.Number(), jobs);
    EXPECT_EQ(AttrCacheGeneration, entries) << "something to save again";
  }

  ScratchFolder folder_;
  MappedDrive drive_{u'Q', folder_.Path()};
  SearchHarness harness_;
  VolumeIndex& volume_ = *AddVolume(Engine(), MakeTestVolume(u"Q:"));
  uint32_t there_ = 0, unreadable_ = 0, docs_ = 0, deleted_ = 0, deletedFolder_ = 0;
  std::shared_ptr<const ResultSet> rows_;
};

TEST_F(ListAtRest, AsksForNothingOfDeletedRecords) {
  Show({there_, unreadable_, docs_, deleted_, deletedFolder_});
  EXPECT_LT(PaintsUntilRest(), 5);
  ExpectNothingIsAsked();
  EXPECT_EQ(CellsOfRow({&volume_, there_}).size, u"10 B");
  EXPECT_EQ(CellsOfRow({&volume_, deleted_}).size, kAbsent);
  EXPECT_EQ(CellsOfRow({&volume_, deletedFolder_}).size, kAbsent);
}

TEST_F(ListAtRest, AsksForNothingThatAFullCacheCannotTake) {
  StoreAttr(volume_, volume_.records[unreadable_].frn, {.valid = true});
  volume_.attrs.reserve(kMostAttrEntries);
  for (uint64_t frn = 1'000'000; volume_.attrs.size() < kMostAttrEntries; ++frn) {
    volume_.attrs.emplace(frn, AttrEntry{.valid = true});
  }
  Show({there_, unreadable_});
  EXPECT_LT(PaintsUntilRest(), 5);
  ExpectNothingIsAsked();
  EXPECT_EQ(CellsOfRow({&volume_, there_}).modified, kAbsent);
}

// Whoever looks at the rows for another reason finds them as they were.
TEST_F(ListAtRest, AFileThatCannotBeReadIsNothingNew) {
  Show({unreadable_});
  EXPECT_LT(PaintsUntilRest(), 5);
  const uint64_t entries = AttrCacheGeneration, reads = AttrCounters().diskReads;
  HydrateRowsAsync(rows_, {0, rows_->size()});
  ASSERT_TRUE(WaitForBackgroundJobs(60'000));
  EXPECT_EQ(AttrCounters().diskReads, reads + 1) << "asked for again";
  EXPECT_EQ(AttrCacheGeneration, entries);
  EXPECT_FALSE(harness_.queue.Take(0).has_value());
}

// A file that changed is shown as it was until it has been asked for.
TEST_F(ListAtRest, AFileThatChangedIsAskedForOnce) {
  Show({there_, unreadable_});
  EXPECT_LT(PaintsUntilRest(), 5);
  folder_.MakeFile("there", std::string(20, 'x'));
  const uint64_t frns[] = {volume_.records[there_].frn, volume_.records[unreadable_].frn};
  EXPECT_EQ(MarkStale(volume_, frns), 2u);
  EXPECT_EQ(CellsOfRow({&volume_, there_}).size, u"10 B");

  EXPECT_LT(PaintsUntilRest(), 5);
  ExpectNothingIsAsked();
  EXPECT_EQ(CellsOfRow({&volume_, there_}).size, u"20 B");
}

}  // namespace
}  // namespace quilmark
