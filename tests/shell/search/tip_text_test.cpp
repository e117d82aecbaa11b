#include "shell/search/tip_text.h"

#include <gtest/gtest.h>

#include <chrono>
#include <future>
#include <memory>

#include "search/attributes/attr_cache.h"
#include "search/attributes/folder_sizes.h"
#include "search/results/search_session.h"
#include "search/sort/sort.h"
#include "shell/list/cell_text.h"
#include "shell/search/row_cells.h"
#include "support/gate.h"
#include "support/search_harness.h"
#include "support/volumes.h"

namespace quilmark {
namespace {

constexpr FileTime kNoon = 133'000'000'000'000'000;
constexpr int64_t kFile = 0, kFolder = 1;

class TipText : public testing::Test {
 protected:
  TipText() {
    folder_ = AddFolder(*volume_, u"docs", kRootFrnOfTests, 77);
    file_ = AddFile(*volume_, u"a.txt", 77);
    HoldRows(std::make_shared<ResultSet>(
        ResultSet{{volume_.get(), file_}, {volume_.get(), folder_}, {volume_.get(), 9'999}, {}}));
  }

  Tip Of(int64_t row, int column) { return TipOfCell(ViewMode::kList, row, column); }
  uint64_t Frn(uint32_t index) const { return volume_->records[index].frn; }
  void Know(uint32_t index, const AttrEntry& entry) { StoreAttr(*volume_, Frn(index), entry); }

  SearchHarness harness_;
  std::unique_ptr<VolumeIndex> volume_ = MakeTestVolume(u"Q:");
  uint32_t folder_ = 0, file_ = 0;
};

TEST_F(TipText, IsTheFullPathForNameAndFolder) {
  for (const int column : {kColumnName, kColumnOfPath}) {
    EXPECT_EQ(Of(kFile, column).text, u"Q:\\docs\\a.txt");
    EXPECT_EQ(Of(kFolder, column).text, u"Q:\\docs");
  }
}

TEST_F(TipText, IsTheFullPathForEveryCellOfTheIconViews) {
  for (const ViewMode view : {ViewMode::kSmallIcons, ViewMode::kLargeIcons}) {
    EXPECT_EQ(TipOfCell(view, kFile, kColumnSize), (Tip{.text = u"Q:\\docs\\a.txt"}));
  }
}

TEST_F(TipText, SaysNothingBesideTheRowsOrOfTheNumber) {
  EXPECT_EQ(Of(-1, kColumnName), Tip{});
  EXPECT_EQ(Of(4, kColumnName), Tip{});
  EXPECT_EQ(Of(kFile, 0), Tip{});
  EXPECT_EQ(Of(kFile, -1), Tip{});
}

TEST_F(TipText, SaysNothingOfARecordThatIsGone) {
  for (const int64_t row : {2, 3}) {
    for (int column = 0; column < kColumns; ++column) EXPECT_EQ(Of(row, column), Tip{});
  }
}

TEST_F(TipText, AsksForWhatIsNotKnown) {
  for (const int column : {kColumnSize, kColumnModified, kColumnCreated}) {
    EXPECT_EQ(Of(kFile, column), (Tip{.isMissing = true}));
  }
}

TEST_F(TipText, IsTheTextOfTheCell) {
  Know(file_, {.size = 2'048, .modified = kNoon, .created = kNoon + 36'000'000'000, .valid = true});
  EXPECT_EQ(Of(kFile, kColumnSize), (Tip{.text = u"2 KB"}));
  EXPECT_EQ(Of(kFile, kColumnModified), (Tip{.text = TimeText(kNoon)}));
  EXPECT_EQ(Of(kFile, kColumnCreated), (Tip{.text = TimeText(kNoon + 36'000'000'000)}));
}

TEST_F(TipText, SaysNothingOfATimeThatAFileHasNot) {
  Know(file_, {.size = 1, .valid = true});
  EXPECT_EQ(Of(kFile, kColumnModified), Tip{});
}

TEST_F(TipText, SaysTheSizeOfAFolderOnlyIfItIsKnown) {
  EXPECT_EQ(Of(kFolder, kColumnSize), (Tip{.isMissing = true}));
  RebuildFolderSizes(*volume_);
  EXPECT_EQ(Of(kFolder, kColumnSize), Tip{});  // nothing is known below it
  Know(file_, {.size = 5'000'000, .valid = true});
  RebuildFolderSizes(*volume_);
  EXPECT_EQ(Of(kFolder, kColumnSize), (Tip{.text = u"4.77 MB"}));
}

TEST_F(TipText, TakesTheSizeFromAScanOfTheFileTable) {
  InstallMftSizes(*volume_, {{Frn(file_), MftSize{.logical = 700}}});
  EXPECT_EQ(Of(kFile, kColumnSize), (Tip{.text = u"700 B"}));
  EXPECT_EQ(Of(kFile, kColumnModified), (Tip{.isMissing = true}));
}

using RowCellsOf = TipText;

TEST_F(RowCellsOf, ShowDotsForWhatCanBeAskedForAndADashForWhatIsNot) {
  const RowCells unknown = CellsOfRow({volume_.get(), file_});
  EXPECT_EQ(unknown.size, kNotKnownYet);
  EXPECT_EQ(unknown.modified, kNotKnownYet);
  EXPECT_EQ(unknown.created, kNotKnownYet);
  EXPECT_TRUE(unknown.isMissing);
  Know(file_, {.valid = true});  // could not be read
  const RowCells unreadable = CellsOfRow({volume_.get(), file_});
  EXPECT_EQ(unreadable.size, u"0 B");
  EXPECT_EQ(unreadable.modified, kAbsent);
  EXPECT_FALSE(unreadable.isMissing);
}

// The interface thread paints them.
TEST_F(RowCellsOf, WaitForNobodyWhoWritesTheAttributes) {
  Gate gate(volume_->attrLock, Gate::Stops::kAll);
  auto painted = std::async(std::launch::async, [this] { return CellsOfRow({volume_.get(), file_}); });
  const bool isPainted = painted.wait_for(std::chrono::minutes(1)) == std::future_status::ready;
  gate.Open();
  EXPECT_TRUE(isPainted);
  const RowCells cells = painted.get();
  EXPECT_TRUE(cells.isLater);
  EXPECT_FALSE(cells.isMissing);
  EXPECT_EQ(cells.modified, u"");
  EXPECT_FALSE(CellsOfRow({volume_.get(), file_}).isLater);
}

TEST_F(RowCellsOf, AreEmptyForARecordThatIsGone) {
  for (const MatchItem& hit : {MatchItem{volume_.get(), 9'999}, MatchItem{}}) {
    const RowCells cells = CellsOfRow(hit);
    EXPECT_EQ(cells.size + cells.modified + cells.created, u"");
    EXPECT_FALSE(cells.isMissing);
  }
}

}  // namespace
}  // namespace quilmark
