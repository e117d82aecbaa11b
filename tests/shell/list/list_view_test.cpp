#include "shell/list/list_view.h"

#include <gtest/gtest.h>

#include <limits>

#include "config/contrast.h"
#include "shell/list/list_stage.h"

namespace quilmark {
namespace {

constexpr Rect kRows = {0, 40, 388, 260};  // five rows of 44

class ListViewTest : public testing::Test {
 protected:
  ListViewTest() { Place(); }

  void Place() { list.Place(kRows, contentWidth, stage.Context()); }
  void Style(const ListStyle& style) {
    list.SetStyle(style);
    Place();
  }
  RecordingCanvas Painted(const Rect& shown) {
    RecordingCanvas canvas(shown);
    rows.painted = rows.unread = rows.reads = 0;
    lastOutcome = list.Paint(canvas, stage.Context(), stage.Bars());
    EXPECT_TRUE(canvas.IsBalanced());
    return canvas;
  }
  static Point MiddleOf(const Rect& place) {
    return {(place.left + place.right) / 2, (place.top + place.bottom) / 2};
  }
  Point InRow(uint64_t row) const { return MiddleOf(list.PlaceOf(row)); }
  Scrollbar Vertical() const { return *VerticalBar(list.Grid(), list.scrollY, rows.count); }
  Scrollbar Horizontal() const { return *HorizontalBar(list.Grid(), list.scrollX); }

  ListStage stage;
  NumberedRows rows;
  int contentWidth = 0;
  ListView list{rows, {}};
  PaintOutcome lastOutcome;
};

TEST_F(ListViewTest, PaintsTheRowsInViewAndReadsNoOthers) {
  const RecordingCanvas canvas = Painted(stage.client);
  EXPECT_EQ(rows.read, (RowSpan{0, 5}));
  EXPECT_EQ(rows.painted, 5);
  list.scrollY = 43;
  Painted(stage.client);
  EXPECT_EQ(rows.read, (RowSpan{0, 6}));
  EXPECT_EQ(rows.unread, 0);
  for (const Drawn& drawn : canvas.drawn) {
    if (drawn.kind == Drawn::kText) EXPECT_EQ(Intersection(drawn.shown, kRows), drawn.shown);
  }
}

TEST_F(ListViewTest, PaintsOnlyWhatTheCanvasShows) {
  const RecordingCanvas canvas = Painted(list.PlaceOf(2));
  EXPECT_EQ(rows.read, (RowSpan{2, 3}));
  ASSERT_EQ(canvas.drawn.size(), 1u);
  EXPECT_EQ(canvas.drawn[0].text, u"2");
  EXPECT_TRUE(Painted({0, 0, 400, 40}).drawn.empty());
  EXPECT_EQ(rows.reads, 0) << "nothing of the rows is shown";
  EXPECT_EQ(Painted(Vertical().track).drawn.size(), 2u);
  EXPECT_EQ(rows.reads, 0) << "a bar alone";
}

TEST_F(ListViewTest, PaintsIconsInLines) {
  Style({.pitch = 84, .cell = 110});
  EXPECT_EQ(Across(list.Grid()), 3);
  Painted(stage.client);
  EXPECT_EQ(rows.read, (RowSpan{0, 9}));
  EXPECT_EQ(rows.painted, 9);
  Painted(list.PlaceOf(4));
  EXPECT_EQ(rows.painted, 1);
  EXPECT_EQ(list.RowAt(InRow(4)), 4);
  EXPECT_EQ(list.RowAt({350, 50}), -1) << "beside the third";
}

TEST_F(ListViewTest, TellsWhatAPaintCouldNotShow) {
  rows.outcome = {.isMissing = true, .isLater = true};
  Painted(stage.client);
  EXPECT_TRUE(lastOutcome.isMissing && lastOutcome.isLater);
  rows.count = 0;
  Painted(stage.client);
  EXPECT_FALSE(lastOutcome.isMissing || lastOutcome.isLater);
}

TEST_F(ListViewTest, TellsWhatItsRowsCouldNotShow) {
  rows.outcomeOfRows = {.isPictureMissing = true};
  Painted(stage.client);
  EXPECT_TRUE(lastOutcome.isPictureMissing);
  EXPECT_FALSE(lastOutcome.isMissing);
  rows.count = 0;
  Painted(stage.client);
  EXPECT_FALSE(lastOutcome.isPictureMissing);
}

TEST_F(ListViewTest, PaintsNothingOfNoRows) {
  rows.count = 0;
  Place();
  EXPECT_TRUE(Painted(stage.client).drawn.empty());
  EXPECT_EQ(list.RowAt({5, 45}), -1);
  EXPECT_EQ(list.Press({5, 45}).row, -1);
  EXPECT_EQ(list.Wheel(-1'200).dirty, Rect());
  EXPECT_EQ(list.Area(), kRows);
}

TEST_F(ListViewTest, CostsTheRowsInViewHoweverManyThereAre) {
  rows.count = 10'000'000;
  Place();
  (void)list.ScrollTo(std::numeric_limits<int64_t>::max());
  EXPECT_EQ(list.scrollY, 10'000'000LL * 44 - 220);
  Painted(stage.client);
  EXPECT_EQ(rows.read, (RowSpan{9'999'995, 10'000'000}));
  rows.count = std::numeric_limits<uint64_t>::max();
  (void)list.ScrollTo(std::numeric_limits<int64_t>::max());
  Painted(stage.client);
  EXPECT_LE(rows.painted, 6);
}

TEST_F(ListViewTest, DrawsTheFormerAndTheNewRowAnewUnderAMovingMouse) {
  const Effects first = list.Move(InRow(1));
  EXPECT_TRUE(first.tracksMouse);
  EXPECT_EQ(first.dirty, list.PlaceOf(1));
  EXPECT_EQ(list.Move(InRow(2)).dirty, Union(list.PlaceOf(1), list.PlaceOf(2)));
  EXPECT_EQ(list.Move(InRow(2)).dirty, Rect());
  EXPECT_EQ(list.hoverRow, 2);
  EXPECT_EQ(list.Move({5, 10}).dirty, list.PlaceOf(2));
  EXPECT_EQ(list.hoverRow, -1);
  EXPECT_EQ(list.Move({5, 20}).dirty, Rect());
}

TEST_F(ListViewTest, DrawsOfARowThatIsCutOffOnlyWhatIsThere) {
  list.scrollY = 10;
  EXPECT_EQ(list.Move({5, 41}).dirty, (Rect{0, 40, 388, 74}));
  EXPECT_EQ(list.Leave().dirty, (Rect{0, 40, 388, 74}));
  EXPECT_EQ(list.Leave().dirty, Rect());
}

TEST_F(ListViewTest, ABarUnderTheMouseStandsOut) {
  EXPECT_EQ(list.Move(MiddleOf(Vertical().track)).dirty, Vertical().track);
  EXPECT_EQ(list.hoverBar, Bar::kVertical);
  EXPECT_EQ(Painted(stage.client).drawn.back().color, stage.Bars().heldThumb);
  EXPECT_EQ(list.Leave().dirty, Vertical().track);
  EXPECT_EQ(Painted(stage.client).drawn.back().color, stage.Bars().thumb);
}

TEST_F(ListViewTest, AThumbIsHeldUntilItIsLetGoOf) {
  const Point thumb = MiddleOf(Vertical().thumb);
  const ListPress press = list.Press(thumb);
  EXPECT_EQ(press.effects.capture, Capture::kTake);
  EXPECT_EQ(press.bar, Bar::kVertical);
  EXPECT_EQ(press.row, -1);
  EXPECT_EQ(Painted(stage.client).drawn.back().color, stage.Bars().heldThumb);
  const Effects moved = list.Move({-500, thumb.y + 60});  // however far beside the bar
  EXPECT_EQ(moved.dirty, list.Area());
  EXPECT_TRUE(moved.syncsBars);
  EXPECT_FALSE(moved.rehovers) << "the mouse is held";
  EXPECT_GT(list.scrollY, 0);
  EXPECT_EQ(list.hoverRow, -1);
  (void)list.Move({0, 10'000});
  EXPECT_EQ(list.scrollY, 100 * 44 - 220);
  const Effects end = list.Release();
  EXPECT_EQ(end.capture, Capture::kRelease);
  EXPECT_TRUE(end.rehovers);
  EXPECT_EQ(end.dirty, Vertical().track);
  EXPECT_EQ(list.dragBar, Bar::kNone);
}

TEST_F(ListViewTest, ALostCaptureEndsADragAndReleasesNothing) {
  (void)list.Press(MiddleOf(Vertical().thumb));
  const Effects lost = list.Lose();
  EXPECT_EQ(lost.capture, Capture::kKeep);
  EXPECT_TRUE(lost.syncsBars);
  EXPECT_EQ(list.dragBar, Bar::kNone);
  const int64_t before = list.scrollY;
  (void)list.Move({390, 250});
  EXPECT_EQ(list.scrollY, before);
  EXPECT_EQ(list.Lose().dirty, Rect());
}

TEST_F(ListViewTest, APressEndsADragWhoseReleaseGotLost) {
  (void)list.Press(MiddleOf(Vertical().thumb));
  const ListPress press = list.Press(InRow(1));
  EXPECT_EQ(press.row, 1);
  EXPECT_EQ(press.effects.dirty, Vertical().track);
  EXPECT_EQ(list.dragBar, Bar::kNone);
}

TEST_F(ListViewTest, APressBesideAThumbMovesItAndHoldsNothing) {
  const Rect track = Vertical().track;
  const ListPress press = list.Press({track.left + 2, track.bottom - 5});
  EXPECT_EQ(press.effects.capture, Capture::kKeep);
  EXPECT_EQ(press.effects.dirty, list.Area());
  EXPECT_EQ(list.scrollY, 100 * 44 - 220);
  EXPECT_EQ(list.dragBar, Bar::kNone);
}

TEST_F(ListViewTest, ATrackThatDragsHoldsWhatItMoved) {
  Style({.trackDrags = true});
  const Rect track = Vertical().track;
  const ListPress press = list.Press({track.left + 2, track.bottom - 5});
  EXPECT_EQ(press.effects.capture, Capture::kTake);
  EXPECT_EQ(list.scrollY, 100 * 44 - 220);
  EXPECT_EQ(list.dragBar, Bar::kVertical);
  (void)list.Move({0, 0});
  EXPECT_EQ(list.scrollY, 0);
}

TEST_F(ListViewTest, ABarThatGoesAwayUnderTheHandMovesNothing) {
  (void)list.Press(MiddleOf(Vertical().thumb));
  rows.count = 2;
  Place();
  EXPECT_EQ(list.Move({390, 200}).dirty, Rect());
  EXPECT_EQ(list.Release().dirty, Rect());
}

TEST_F(ListViewTest, ScrollsSidewaysOverItsColumns) {
  contentWidth = 700;
  Place();
  EXPECT_EQ(Horizontal().track, (Rect{0, 260, 388, 270}));
  EXPECT_EQ(list.Area(), (Rect{0, 40, 398, 270}));
  (void)list.Press({300, 265});
  const int pressed = list.scrollX;
  EXPECT_GT(pressed, 0);
  (void)list.Press(MiddleOf(Horizontal().thumb));
  EXPECT_EQ(list.dragBar, Bar::kHorizontal);
  (void)list.Move({10'000, 0});
  EXPECT_EQ(list.scrollX, 700 - 388);
  EXPECT_EQ(list.scrollY, 0);
  (void)list.Release();
  EXPECT_EQ(list.Tilt(-120).dirty, list.Area());
  EXPECT_EQ(list.scrollX, 700 - 388 - 40);
  (void)list.Tilt(60);
  (void)list.Tilt(60);
  EXPECT_EQ(list.scrollX, 700 - 388);
  EXPECT_EQ(list.Tilt(120).dirty, Rect());
  const RecordingCanvas canvas = Painted(list.PlaceOf(0));
  EXPECT_EQ(canvas.drawn[0].place.left, 4 - (700 - 388));
}

TEST_F(ListViewTest, AWheelMovesByNotchesAndKeepsWhatIsLeft) {
  EXPECT_EQ(list.Wheel(-120).dirty, list.Area());
  EXPECT_EQ(list.scrollY, 100);
  for (int i = 0; i < 120; ++i) (void)list.Wheel(-1);
  EXPECT_EQ(list.scrollY, 200);
  (void)list.Wheel(240);
  EXPECT_EQ(list.scrollY, 0);
  EXPECT_EQ(list.Wheel(120).dirty, Rect());
  (void)list.Wheel(std::numeric_limits<int>::min());
  EXPECT_EQ(list.scrollY, 100 * 44 - 220);
}

TEST_F(ListViewTest, AWheelMovesByWholeLinesWhereTheListWantsIt) {
  stage.dpi = 120;
  Style({.pitch = 30, .notchLines = 3});
  EXPECT_EQ(list.Grid().pitch, 38);
  (void)list.Wheel(-120);
  EXPECT_EQ(list.scrollY, 3 * 38);
  (void)list.Wheel(120);
  EXPECT_EQ(list.scrollY, 0);
}

TEST_F(ListViewTest, RowsThatMoveLeaveNoneHovered) {
  (void)list.Move(InRow(1));
  EXPECT_TRUE(list.Wheel(-120).rehovers);
  EXPECT_EQ(list.hoverRow, -1);
  EXPECT_EQ(list.Move({5, 45}).dirty, Intersection(list.PlaceOf(2), kRows));
}

TEST_F(ListViewTest, FollowsTheCommandsOfAScrollbar) {
  const auto after = [&](ScrollCommand command, int64_t position = 0) {
    (void)list.Scroll({.command = command, .position = position});
    return list.scrollY;
  };
  EXPECT_EQ(after(ScrollCommand::kLineBack), 0);
  EXPECT_EQ(after(ScrollCommand::kLineOn), 44);
  EXPECT_EQ(after(ScrollCommand::kPageOn), 44 + 4 * 44);
  EXPECT_EQ(after(ScrollCommand::kPageBack), 44);
  EXPECT_EQ(after(ScrollCommand::kEnd), 4'400 - 220);
  EXPECT_EQ(after(ScrollCommand::kLineOn), 4'400 - 220);
  EXPECT_EQ(after(ScrollCommand::kTo, 1'000), 1'000);
  EXPECT_EQ(after(ScrollCommand::kDone), 1'000);
  EXPECT_EQ(after(static_cast<ScrollCommand>(77)), 1'000);
  EXPECT_EQ(after(ScrollCommand::kTrackTo, std::numeric_limits<int64_t>::max()), 4'400 - 220);
  EXPECT_EQ(after(ScrollCommand::kTo, -5), 0);
  EXPECT_EQ(after(ScrollCommand::kBegin), 0);
}

TEST_F(ListViewTest, FollowsTheCommandsOfASidewaysScrollbar) {
  contentWidth = 800;
  Place();
  const auto after = [&](ScrollCommand command, int64_t position = 0) {
    (void)list.Scroll({.isVertical = false, .command = command, .position = position});
    return list.scrollX;
  };
  EXPECT_EQ(after(ScrollCommand::kLineOn), 40);
  EXPECT_EQ(after(ScrollCommand::kTrackTo, 250), 250);
  EXPECT_EQ(after(ScrollCommand::kPageBack), 0);
  EXPECT_EQ(after(ScrollCommand::kPageOn), 388 - 40);
  EXPECT_EQ(after(ScrollCommand::kEnd), 412);
  EXPECT_EQ(list.scrollY, 0);
}

TEST_F(ListViewTest, TellsAScrollbarItsRange) {
  list.scrollY = 500;
  const BarRange range = list.RangeOf(Bar::kVertical, 105);
  EXPECT_EQ(std::tuple(range.id, range.last, range.page, range.position),
            std::tuple(105, 4'400 - 1, 220, 500));
  const BarRange none = list.RangeOf(Bar::kHorizontal, 113);
  EXPECT_EQ(std::tuple(none.last, none.page, none.position), std::tuple(388 - 1, 388, 0));
  rows.count = 1'000'000'000;  // more pixels than such a bar can count
  (void)list.Scroll({.command = ScrollCommand::kTo, .position = list.RangeOf(Bar::kVertical, 105).last});
  EXPECT_EQ(list.scrollY, 44'000'000'000 - 220);
  EXPECT_EQ(list.RangeOf(Bar::kVertical, 105).position, (44'000'000'000 - 220) / 32);
}

TEST_F(ListViewTest, KeepsTheRowsUnderAFinger) {
  contentWidth = 700;
  Place();
  EXPECT_EQ(list.Pan({.at = {200, 200}, .isFirst = true}).dirty, Rect());
  (void)list.Pan({.at = {190, 50}});
  EXPECT_EQ(list.scrollY, 150);
  EXPECT_EQ(list.scrollX, 10);
  (void)list.Pan({.at = {300, 1'000}});
  EXPECT_EQ(list.scrollY, 0);
  EXPECT_EQ(list.scrollX, 0);
  (void)list.Pan({.at = {100, 100}, .isFirst = true});  // another finger
  EXPECT_EQ(list.Pan({.at = {100, 90}}).dirty, list.Area());
  EXPECT_EQ(list.scrollY, 10);
}

TEST_F(ListViewTest, KeepsTheSameRowsInViewAtAnotherScale) {
  for (const int pitch : {44, 30, 52, 40, 28}) {
    for (const uint32_t to : {96u, 110u, 120u, 144u, 168u, 192u, 288u}) {
      stage.dpi = 96;
      rows.count = 10'000'000;
      Style({.pitch = pitch});
      (void)list.ScrollTo(int64_t{pitch} * 8'000'000 + pitch / 2);
      list.Rescale(96, to);
      stage.dpi = to;
      Place();
      EXPECT_EQ(list.RowAt({5, 40}), 8'000'000) << pitch << " at " << to;
      list.Rescale(to, 96);
      stage.dpi = 96;
      Place();
      EXPECT_EQ(list.RowAt({5, 40}), 8'000'000) << pitch << " back from " << to;
    }
  }
  Style({});
  (void)list.ScrollTo(50);
  list.Rescale(96, 192);
  EXPECT_EQ(list.scrollY, 100) << "and the same part of a row";
  list.scrollX = 100;
  list.Rescale(0, 144);  // 0 counts as 96
  EXPECT_EQ(list.scrollX, 150);
  list.scrollY = std::numeric_limits<int64_t>::max();
  list.Rescale(96, 288);
  EXPECT_GT(list.scrollY, 0);
}

TEST_F(ListViewTest, ComesBackWithinItsLimitsWhenItIsPlaced) {
  contentWidth = 700;
  Place();
  (void)list.ScrollTo(4'000);
  (void)list.ScrollSidewaysTo(300);
  rows.count = 6;
  contentWidth = 400;
  Place();
  EXPECT_EQ(list.scrollY, 44);
  EXPECT_EQ(list.scrollX, 12);
}

TEST_F(ListViewTest, StartsAnotherStyleFromTheTop) {
  (void)list.ScrollTo(1'000);
  (void)list.Move(InRow(25));
  Style({.pitch = 112, .cell = 150});
  EXPECT_EQ(list.scrollY, 0);
  EXPECT_EQ(list.hoverRow, -1);
  EXPECT_EQ(list.Grid().pitch, 112);
}

TEST_F(ListViewTest, HasNoBarForLessThanItsSlack) {
  rows.count = 5;
  Style({.slack = 2});
  list.Place({0, 40, 388, 258}, 0, stage.Context());
  EXPECT_EQ(list.BarAt({390, 100}), Bar::kNone);
  EXPECT_EQ(list.Press({390, 100}).bar, Bar::kNone);
  list.Place({0, 40, 388, 257}, 0, stage.Context());
  EXPECT_EQ(list.BarAt({390, 100}), Bar::kVertical);
}

TEST_F(ListViewTest, GivesUpRoomForABarThatStandsWithinIt) {
  Style({.bar = 11, .barTakesRoom = true});
  EXPECT_EQ(list.Grid().rows, (Rect{0, 40, 377, 260}));
  EXPECT_EQ(list.Area(), kRows);
  EXPECT_EQ(list.RowAt({377, 50}), -1);
  EXPECT_EQ(list.BarAt({377, 50}), Bar::kVertical);
  rows.count = 5;
  EXPECT_EQ(list.Grid().rows, kRows) << "no bar";
  EXPECT_EQ(list.RowAt({377, 50}), 0);
}

TEST_F(ListViewTest, AnswersInAPlaceThatIsInsideOut) {
  for (const Rect& place : {Rect{0, 40, 0, 40}, Rect{0, 40, -10, 10}, Rect{5, 5, 6, 6}}) {
    list.Place(place, 300, stage.Context());
    EXPECT_EQ(list.Press({0, 40}).row, -1);
    (void)list.Move({0, 40});
    (void)list.Wheel(-120);
    (void)list.Tilt(120);
    (void)list.Scroll({.command = ScrollCommand::kPageOn});
    (void)list.Leave();
    Painted(stage.client);
    EXPECT_LE(rows.painted, 1);
  }
}

TEST(BarColors, StandOutOfTheirGround) {
  for (const bool isDark : {false, true}) {
    const Palette palette = ThemeDefaults(isDark);
    for (const Color ground : {palette.surface, palette.cardBackground}) {
      const BarColors bars = BarColorsOn(palette, ground);
      EXPECT_EQ(bars.track, ground);
      EXPECT_GE(ContrastRatio(ground, bars.thumb), 2);
      EXPECT_EQ(bars.heldThumb, palette.accent);
    }
  }
  Palette system = ThemeDefaults(false);
  system.isSystem = true;
  EXPECT_EQ(BarColorsOn(system, system.surface).thumb, system.text);
}

// The rows of a source may change on another thread.
class RowsThatGo : public NumberedRows {
 public:
  uint64_t Count() const override { return asked_++ < stay ? 1'000 : 1; }
  int stay = 0;

 private:
  mutable int asked_ = 0;
};

TEST(ListViewOfRowsThatGo, IsPressedAtAnyMoment) {
  for (int stay = 0; stay < 12; ++stay) {
    const ListStage stage;
    RowsThatGo rows;
    rows.stay = stay;
    ListView list(rows, {});
    list.Place({0, 0, 380, 300}, 0, stage.Context());
    const ListPress press = list.Press({383, 200});
    if (press.bar == Bar::kNone) EXPECT_EQ(press.row, -1) << "beside the rows";
    EXPECT_EQ(list.dragBar, Bar::kNone) << "a track is not held";
  }
}

}  // namespace
}  // namespace quilmark
