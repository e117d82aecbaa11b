#include "shell/list/made_up_lists.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "config/contrast.h"
#include "shell/list/list_stage.h"
#include "shell/view/laws.h"

namespace quilmark {
namespace {

// Each of the three lists, painted on its card.
struct Lists {
  explicit Lists(uint32_t dpi = 96, int percent = 100) : stage{.dpi = dpi, .percent = percent} {
    Resize(420, 500);
  }

  void Resize(int width, int height) {
    stage.client = {0, 0, stage.Scaled(width), stage.Scaled(height)};
    for (ListView* const list : {&space, &groups, &files}) {
      list->Place(stage.client, 0, stage.Context());
    }
  }
  void Choose(int64_t row, int64_t hovered) {
    spaceRows.chosen = groupRows.chosen = fileRows.chosen = row;
    space.hoverRow = groups.hoverRow = files.hoverRow = hovered;
  }
  void Paint(const ListView& list, Canvas& canvas) const {
    const Color card = stage.palette.cardBackground;
    canvas.Fill(stage.client, card);
    list.Paint(canvas, stage.Context(), BarColorsOn(stage.palette, card));
  }
  RecordingCanvas Painted(const ListView& list) const {
    RecordingCanvas canvas(stage.client);
    Paint(list, canvas);
    EXPECT_TRUE(canvas.IsBalanced());
    return canvas;
  }
  std::vector<std::string> Faults() const {
    std::vector<std::string> faults;
    for (const ListView* const list : {&space, &groups, &files}) {
      const RecordingCanvas canvas = Painted(*list);
      for (const auto& more :
           {TextsOutsideTheirBoxes(canvas, stage.fonts), TextsOverOthers(canvas, stage.fonts),
            UnreadableTexts(canvas, stage.fonts, {})}) {
        faults.insert(faults.end(), more.begin(), more.end());
      }
    }
    return faults;
  }

  ListStage stage;
  SpaceRows spaceRows;
  GroupRows groupRows;
  FileRows fileRows;
  ListView space{spaceRows, kSpaceStyle}, groups{groupRows, kGroupStyle}, files{fileRows, kFileStyle};
};

struct Scale {
  uint32_t dpi;
  int percent;  // of the table's widths
};
class ListsAtScale : public testing::TestWithParam<Scale> {};

TEST_P(ListsAtScale, ObeyTheLawsAtEveryWidthInBothThemes) {
  Lists lists(GetParam().dpi, GetParam().percent);
  lists.Choose(1, 2);
  for (const bool isDark : {false, true}) {
    lists.stage.palette = ThemeDefaults(isDark);
    for (const int width : {1, 40, 90, 130, 240, 260, 330, 420, 700, 1'100}) {
      lists.Resize(width, 400);
      EXPECT_THAT(lists.Faults(), testing::IsEmpty()) << width << (isDark ? " dark" : " light");
    }
  }
}

TEST_P(ListsAtScale, ObeyTheLawsWhereverTheyAreScrolledTo) {
  Lists lists(GetParam().dpi, GetParam().percent);
  for (const int row : {0, 3, 36, 39}) {
    lists.Choose(row, row + 1);
    for (ListView* const list : {&lists.space, &lists.groups, &lists.files}) {
      (void)list->ScrollTo(int64_t{row} * list->Grid().pitch + 7);
    }
    EXPECT_THAT(lists.Faults(), testing::IsEmpty()) << row;
  }
}

INSTANTIATE_TEST_SUITE_P(Scales, ListsAtScale,
                         testing::Values(Scale{96, 85}, Scale{96, 100}, Scale{96, 125}, Scale{144, 85},
                                         Scale{144, 100}, Scale{144, 125}, Scale{192, 85},
                                         Scale{192, 100}, Scale{192, 125}, Scale{288, 85},
                                         Scale{288, 100}, Scale{288, 125}));

class ListsInTiles : public testing::TestWithParam<uint32_t> {};

TEST_P(ListsInTiles, AreTheSame) {
  Lists lists(GetParam());
  lists.Resize(350, 210);
  lists.Choose(1, 2);
  for (ListView* const list : {&lists.space, &lists.groups, &lists.files}) {
    list->scrollY = 17;
    EXPECT_EQ(PixelsThatTilesChange(lists.stage.client, lists.stage.fonts,
                                    [&](Canvas& canvas) { lists.Paint(*list, canvas); }),
              0u);
  }
}

INSTANTIATE_TEST_SUITE_P(Scales, ListsInTiles, testing::Values(96u, 144u, 192u, 288u));

const Drawn* TextIn(const RecordingCanvas& canvas, const Rect& row, size_t which) {
  for (const Drawn& drawn : canvas.drawn) {
    if (drawn.kind != Drawn::kText || drawn.place.top < row.top || drawn.place.bottom > row.bottom)
      continue;
    if (which-- == 0) return &drawn;
  }
  return nullptr;
}

TEST(Lists, HaveRowsAndBarsOfTheirOwnSizes) {
  const Lists lists;
  EXPECT_EQ(lists.space.PlaceOf(1), (Rect{0, 40, 409, 80}));
  EXPECT_EQ(lists.groups.PlaceOf(1), (Rect{0, 52, 409, 104}));
  EXPECT_EQ(lists.files.PlaceOf(1), (Rect{0, 30, 409, 60}));
  EXPECT_EQ(lists.files.BarAt({409, 10}), Bar::kVertical);
  EXPECT_EQ(lists.files.RowAt({409, 10}), -1);
}

TEST(Lists, TurnByWholeRows) {
  for (const uint32_t dpi : {96u, 120u, 144u, 168u}) {
    Lists lists(dpi);
    (void)lists.groups.Wheel(-120);
    (void)lists.files.Wheel(-120);
    EXPECT_EQ(lists.groups.scrollY, 2 * lists.groups.Grid().pitch) << dpi;
    EXPECT_EQ(lists.files.scrollY, 3 * lists.files.Grid().pitch) << dpi;
    if (dpi != 96) continue;
    EXPECT_EQ(lists.groups.scrollY, 104);
    EXPECT_EQ(lists.files.scrollY, 90);
  }
}

TEST(Lists, HaveABarFromMoreThanTwoPixelsOn) {
  Lists lists;
  lists.groupRows.count = 10;
  lists.fileRows.count = 17;
  lists.Resize(420, 518);
  EXPECT_EQ(lists.groups.BarAt({415, 5}), Bar::kNone);
  EXPECT_EQ(lists.groups.PlaceOf(0).right, 420);
  lists.Resize(420, 517);
  EXPECT_EQ(lists.groups.BarAt({415, 5}), Bar::kVertical);
  lists.Resize(420, 508);
  EXPECT_EQ(lists.files.BarAt({415, 5}), Bar::kNone);
  lists.Resize(420, 507);
  EXPECT_EQ(lists.files.BarAt({415, 5}), Bar::kVertical);
}

TEST(Lists, HaveThumbsOfALeastLength) {
  Lists lists;
  lists.spaceRows.count = lists.groupRows.count = lists.fileRows.count = 1'000'000;
  const auto length = [](const ListView& list) {
    return Height(VerticalBar(list.Grid(), 0, 1'000'000)->thumb);
  };
  EXPECT_EQ(length(lists.space), 24);
  EXPECT_EQ(length(lists.groups), 28);
  EXPECT_EQ(length(lists.files), 28);
}

TEST(Lists, AGroupsRightBoxIsAsWideAsItsTextWithinBounds) {
  Lists lists;
  const auto box = [&](uint64_t row) {
    const RecordingCanvas canvas = lists.Painted(lists.groups);
    return TextIn(canvas, lists.groups.PlaceOf(row), 1)->place;  // behind the badge's
  };
  lists.Resize(1'011, 500);  // 1,000 beside the bar
  const int each = lists.stage.fonts.WidthOf(FontRole::kList, u"1023.99 MB × 2");
  ASSERT_GT(each + 4, 72);
  const int line = std::max(lists.stage.fonts.LineHeight(FontRole::kList), 24 - 6);
  EXPECT_EQ(box(0), (Rect{990 - each - 4, 6, 990, 6 + line})) << "text + 4";
  lists.Resize(311, 500);
  EXPECT_EQ(Width(box(0)), (290 - (10 + 22 + 10)) / 3) << "a third";
  lists.Resize(211, 500);
  EXPECT_EQ(Width(box(0)), 72) << "at least";
}

TEST(Lists, APathEndsBeforeItsSize) {
  Lists lists;
  const RecordingCanvas canvas = lists.Painted(lists.files);
  const Drawn* const size = TextIn(canvas, lists.files.PlaceOf(0), 0);
  const Drawn* const path = TextIn(canvas, lists.files.PlaceOf(0), 1);
  EXPECT_EQ(size->place, (Rect{409 - 96, 0, 409 - 10, 30}));
  EXPECT_EQ(size->style.align, Align::kRight);
  EXPECT_EQ(path->place, (Rect{12, 0, 409 - 90, 30}));
  EXPECT_EQ(path->style.cut, Cut::kPath);
}

TEST(Lists, AHoverCostsTwoRows) {
  Lists lists;
  (void)lists.groups.Move({50, 60});
  const Rect dirty = lists.groups.Move({50, 110}).dirty;
  EXPECT_EQ(dirty, (Rect{0, 52, 409, 156}));
  RecordingCanvas canvas(dirty);
  lists.Paint(lists.groups, canvas);
  EXPECT_LT(canvas.drawn.size(), lists.Painted(lists.groups).drawn.size() / 4);
}

}  // namespace
}  // namespace quilmark
