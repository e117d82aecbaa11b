#include "shell/search/search_paint.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "config/system_palette.h"
#include "shell/preset_palette.h"
#include "shell/search/search_picture.h"
#include "shell/view/laws.h"

namespace quilmark {
namespace {

struct Scale {
  uint32_t dpi;
  int percent;  // of the table's widths
};
class SearchPictureAtScale : public testing::TestWithParam<Scale> {
 protected:
  SearchPicture picture{GetParam().dpi, GetParam().percent};
};

TEST_P(SearchPictureAtScale, ObeysTheLawsAtEveryWidth) {
  const int widest = ScaleFor(GetParam().dpi, 1'600);
  for (int width = 1; width < widest; width += 1 + width / 5) {
    picture.Resize(width, ScaleFor(GetParam().dpi, 700));
    for (const ViewMode view : {ViewMode::kList, ViewMode::kSmallIcons, ViewMode::kLargeIcons}) {
      picture.SetView(view);
      EXPECT_THAT(picture.Faults(), testing::IsEmpty()) << width << ", view " << static_cast<int>(view);
    }
    picture.SetView(ViewMode::kList);
    picture.SetSidebar(true);
    EXPECT_THAT(picture.Faults(), testing::IsEmpty()) << width << " with a sidebar";
    picture.SetSidebar(false);
  }
}

TEST_P(SearchPictureAtScale, ObeysTheLawsAtEveryHeightWithNothingToShow) {
  picture.Hold(0);
  for (int height = 1; height < ScaleFor(GetParam().dpi, 800); height += 1 + height / 5) {
    picture.Resize(ScaleFor(GetParam().dpi, 1'100), height);
    EXPECT_THAT(picture.Faults(), testing::IsEmpty()) << height;
  }
}

INSTANTIATE_TEST_SUITE_P(Scales, SearchPictureAtScale,
                         testing::Values(Scale{96, 85}, Scale{96, 100}, Scale{96, 125}, Scale{144, 85},
                                         Scale{144, 100}, Scale{144, 125}, Scale{192, 85},
                                         Scale{192, 100}, Scale{192, 125}, Scale{288, 85},
                                         Scale{288, 100}, Scale{288, 125}));

class SearchPictureInTiles : public testing::TestWithParam<uint32_t> {};

TEST_P(SearchPictureInTiles, IsTheSame) {
  SearchPicture picture(GetParam());
  CurrentWindowSettings.tableGridLines = true;
  SelectOnly(picture.app.search.list.selection, 3);
  picture.Resize(ScaleFor(GetParam(), 700), ScaleFor(GetParam(), 420));
  for (const ViewMode view : {ViewMode::kList, ViewMode::kSmallIcons, ViewMode::kLargeIcons}) {
    picture.SetView(view);
    picture.app.search.rows.hoverRow = 1;
    picture.app.search.rows.scrollY = 17;
    for (const bool isAtSide : {false, true}) {
      picture.SetSidebar(isAtSide);
      EXPECT_EQ(PixelsThatTilesChange(
                    picture.Context().client, picture.fonts,
                    [&](Canvas& canvas) { PaintSearch(canvas, picture.Context(), picture.app.search); }),
                0u);
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Scales, SearchPictureInTiles, testing::Values(96u, 144u));

Palette PaletteOf(int index) {
  constexpr int kThemes = 2;
  if (index < kThemes) return ThemeDefaults(index == 1);
  if (index == kThemes + kUiColorPresets) {
    return PaletteInForce(false, {},
                          SystemColors{.window = 0,
                                       .windowText = 0xFFFFFF,
                                       .highlight = 0xFFFF00,
                                       .highlightText = 0,
                                       .buttonFace = 0,
                                       .grayText = 0x3FF23F,
                                       .hotLight = 0x00FFFF});
  }
  return PresetPalette(index - kThemes);
}

class SearchPictureIn : public testing::TestWithParam<int> {};

TEST_P(SearchPictureIn, CanBeRead) {
  SearchPicture picture;
  CurrentPalette = PaletteOf(GetParam());
  SelectOnly(picture.app.search.list.selection, 2);
  SelectToggle(picture.app.search.list.selection, 4);
  picture.app.search.rows.hoverRow = 0;
  picture.app.search.list.hoverTag = 2;
  for (const bool isAtSide : {false, true}) {
    picture.SetSidebar(isAtSide);
    EXPECT_THAT(picture.Faults(), testing::IsEmpty());
  }
}

// Both themes, the presets, high contrast.
INSTANTIATE_TEST_SUITE_P(Palettes, SearchPictureIn, testing::Range(0, 3 + kUiColorPresets));

TEST(SearchPaint, CostsTheRowsInViewHoweverManyThereAre) {
  SearchPicture picture;
  picture.Hold(100);
  const size_t drawn = picture.Painted().drawn.size();
  picture.Hold(1'000'000);
  EXPECT_EQ(picture.Painted().drawn.size(), drawn);
}

// The rows are another thread's to replace, and their count follows with its message.
TEST(SearchPaint, DrawsNothingOfRowsThatAreGone) {
  SearchPicture picture;
  picture.Hold(3);
  const size_t three = picture.Painted().drawn.size();
  SetDisplayCount(8);
  EXPECT_EQ(picture.Painted().drawn.size(), three);
}

TEST(SearchPaint, BeginsAtTheTopInAnotherView) {
  SearchPicture picture;
  picture.app.search.rows.scrollY = 440;
  picture.SetView(ViewMode::kList);
  EXPECT_EQ(picture.app.search.rows.scrollY, 440);
  picture.SetView(ViewMode::kLargeIcons);
  EXPECT_EQ(picture.app.search.rows.scrollY, 0);
}

TEST(SearchPaint, DrawsNothingOfRowsThatAreNotShown) {
  SearchPicture picture;
  const Rect third = picture.app.search.rows.PlaceOf(2);
  RecordingCanvas canvas(third);
  PaintSearch(canvas, picture.Context(), picture.app.search);
  for (const Drawn& drawn : canvas.drawn) {
    EXPECT_EQ(Intersection(drawn.shown, third), drawn.shown);
    if (drawn.kind == Drawn::kText) EXPECT_GE(drawn.place.top, third.top);
  }
  EXPECT_LT(canvas.drawn.size(), picture.Painted().drawn.size() / 4);
}

// What a paint could not show is asked for once it has been told.
class PictureThatIsMissing : public testing::Test {
 protected:
  PictureThatIsMissing() {
    picture.AddPicture(u"holiday.jpg");
    picture.SetView(ViewMode::kLargeIcons);
    picture.window.timers.clear();
  }
  void Note() {
    const ViewContext context = picture.Context();
    RecordingCanvas canvas(context.client);
    (void)NoteListPaint(picture.app.search, context, context.client,
                        PaintSearch(canvas, context, picture.app.search));
  }

  SearchPicture picture;
};

TEST_F(PictureThatIsMissing, IsAskedForByTheSettleTimer) {
  Note();
  EXPECT_EQ(picture.window.timers.at(kTimerScrollSettle), 70u);
  EXPECT_TRUE(picture.engine.pictured.empty());
}

TEST_F(PictureThatIsMissing, WaitsForTheListToRest) {
  picture.app.search.lastScrollTick = picture.nowMs - 349;
  Note();
  EXPECT_TRUE(picture.window.timers.empty());
}

// Else the timer and the paint would follow each other for as long as the job runs.
TEST_F(PictureThatIsMissing, WaitsForTheEndOfAJobThatRuns) {
  picture.engine.isLoadingThumbnails = true;
  Note();
  EXPECT_TRUE(picture.window.timers.empty());
  EXPECT_EQ(picture.engine.pictured.size(), 1u);
}

TEST_F(PictureThatIsMissing, IsNotAskedForAgainWhereItCouldNotBeHad) {
  picture.icons.GetIcon({.path = u"Q:\\holiday.jpg", .size = 48, .thumbnail = true});
  Note();
  EXPECT_TRUE(picture.window.timers.empty());
  EXPECT_TRUE(picture.engine.pictured.empty());
}

TEST_F(PictureThatIsMissing, IsShownOnceItHasCome) {
  picture.source.thumbnailSide = 48;
  const IconRef icon =
      picture.icons.GetIcon({.path = u"Q:\\holiday.jpg", .size = 48, .thumbnail = true});
  const RecordingCanvas canvas = picture.Painted();
  EXPECT_EQ(std::count_if(canvas.drawn.begin(), canvas.drawn.end(),
                          [&](const Drawn& one) { return one.icon == icon.get(); }),
            1);
}

}  // namespace
}  // namespace quilmark
