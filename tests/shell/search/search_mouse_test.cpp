#include "shell/search/search_mouse.h"

#include "shell/search/list_scroll.h"
#include "shell/search/search_picture.h"
#include "shell/search/search_places.h"
#include "shell/search/tip_text.h"
#include "shell/view/commands.h"
#include "shell/view/window_ids.h"

namespace quilmark {
namespace {

constexpr uint64_t kLongAgo = 100'000;  // since the list moved

class SearchMouse : public testing::Test {
 protected:
  SearchMouse() {
    picture.Hold(1'000);
    window.calls.clear();
    app.search.listPaintedMs = nowMs;
  }

  Effects Send(MouseEvent event) {
    const Effects effects = OnSearchMouse(app.search, Context(), event);
    window.CarryOut(effects);
    return effects;
  }
  ViewContext Context() const {
    ViewContext context = picture.Context();
    context.nowMs = nowMs;
    context.isTipShown = isTipShown;
    return context;
  }
  Effects Send(Mouse kind, Point at) { return Send({.kind = kind, .at = at}); }

  ColumnsLayout Layout() const { return PlaceColumns(app.search, Context()); }
  Point InRow(uint64_t row, int x = 150) const {
    const Rect place = app.search.rows.PlaceOf(row);
    return {x, (place.top + place.bottom) / 2};
  }
  static Point MiddleOf(const Rect& place) {
    return {(place.left + place.right) / 2, (place.top + place.bottom) / 2};
  }
  Scrollbar Vertical() const {
    return *VerticalBar(app.search.rows.Grid(), app.search.rows.scrollY, DisplayCount());
  }
  Point EdgeOf(int column) const {
    return {ColumnLeft(Layout(), app.search.rows.scrollX, column + 1), MiddleOf(Layout().header).y};
  }
  // What is painted anew at the next timer.
  std::optional<Rect> Dirty() const {
    return app.search.repaint.isPending ? app.search.repaint.only : std::nullopt;
  }

  SearchPicture picture;
  AppState& app = picture.app;
  RecordingWindow& window = picture.window;
  uint64_t nowMs = kLongAgo;
  bool isTipShown = false;
};

TEST_F(SearchMouse, APressOnARowChoosesItAndTakesTheKeys) {
  const Effects effects = Send(Mouse::kPress, InRow(2));
  EXPECT_EQ(effects.focus, Focus::kWindow);
  EXPECT_EQ(effects.capture, Capture::kKeep);
  EXPECT_EQ(SelectedRows(app.search.list.selection, DisplayCount()), (std::vector<uint64_t>{2}));
  EXPECT_EQ(window.Count("InvalidateList"), 1u);
}

TEST_F(SearchMouse, HeldKeysExtendTheChoice) {
  (void)Send(Mouse::kPress, InRow(1));
  (void)Send({.kind = Mouse::kPress, .at = InRow(3), .shift = true});
  (void)Send({.kind = Mouse::kPress, .at = InRow(6), .ctrl = true});
  EXPECT_EQ(SelectedRows(app.search.list.selection, DisplayCount()),
            (std::vector<uint64_t>{1, 2, 3, 6}));
}

TEST_F(SearchMouse, APressBesideTheRowsChoosesNoneAndLeavesTheKeys) {
  picture.Hold(2);
  (void)Send(Mouse::kPress, InRow(1));
  EXPECT_EQ(Send(Mouse::kPress, InRow(5)).focus, Focus::kKeep);
  EXPECT_TRUE(SelectedRows(app.search.list.selection, DisplayCount()).empty());
}

TEST_F(SearchMouse, ASlowSecondPressOnANameOpensItsEditor) {
  EXPECT_EQ(Send(Mouse::kPress, InRow(2)).editor, Editor::kKeep);
  nowMs += 700;
  const Effects second = Send(Mouse::kPress, InRow(2));
  EXPECT_EQ(second.editor, Editor::kOpen);
  EXPECT_EQ(second.focus, Focus::kKeep) << "the editor takes it";
}

TEST_F(SearchMouse, ADoubleClickFocusesARowAndIsTwoPressesElsewhere) {
  (void)Send(Mouse::kDouble, InRow(4));
  EXPECT_EQ(app.search.list.selection.focusRow, 4);
  (void)Send(Mouse::kDouble, MiddleOf(Layout().header));
  EXPECT_EQ(picture.engine.sorts.size(), 1u);
}

TEST_F(SearchMouse, AThumbIsHeldUntilItIsLetGoOf) {
  const Point thumb = MiddleOf(Vertical().thumb);
  EXPECT_EQ(Send(Mouse::kPress, thumb).capture, Capture::kTake);
  EXPECT_TRUE(app.search.thumbDragging);
  (void)Send(Mouse::kMove, {thumb.x, thumb.y + 100});
  const int64_t moved = app.search.rows.scrollY;
  EXPECT_GT(moved, 0);
  (void)Send(Mouse::kMove, {0, thumb.y + 150});  // however far beside the bar
  EXPECT_GT(app.search.rows.scrollY, moved);
  window.calls.clear();
  const Effects end = Send(Mouse::kRelease, {thumb.x, thumb.y + 150});
  EXPECT_EQ(end.capture, Capture::kRelease);
  EXPECT_FALSE(app.search.thumbDragging);
  EXPECT_EQ(window.timers.at(kTimerScrollSettle), 350u);
  EXPECT_EQ(window.Count("SyncBars"), 1u);
}

TEST_F(SearchMouse, ALostCaptureEndsADragAndReleasesNothing) {
  (void)Send(Mouse::kPress, MiddleOf(Vertical().thumb));
  EXPECT_EQ(Send({.kind = Mouse::kLost}).capture, Capture::kKeep);
  EXPECT_FALSE(app.search.thumbDragging);
  EXPECT_EQ(app.search.rows.dragBar, Bar::kNone);
}

TEST_F(SearchMouse, APressBesideAThumbMovesItAndHoldsNothing) {
  const Scrollbar bar = Vertical();
  const Effects effects = Send(Mouse::kPress, {bar.track.left + 2, bar.track.bottom - 5});
  EXPECT_EQ(effects.capture, Capture::kKeep);
  EXPECT_EQ(app.search.rows.scrollY, ScrollLimit(app.search.rows.Grid(), DisplayCount()));
  EXPECT_EQ(app.search.rows.dragBar, Bar::kNone);
  EXPECT_EQ(window.timers.at(kTimerScrollSettle), 220u);
}

TEST_F(SearchMouse, AHeaderSortsByItsColumnAndNeverByTheNumber) {
  (void)Send(Mouse::kPress, {ColumnLeft(Layout(), 0, 2) + 40, MiddleOf(Layout().header).y});
  (void)Send(Mouse::kPress, {ColumnLeft(Layout(), 0, 0) + 30, MiddleOf(Layout().header).y});
  ASSERT_EQ(picture.engine.sorts.size(), 1u);
  EXPECT_EQ(picture.engine.sorts[0], std::pair(2, Direction::kByClick));
}

TEST_F(SearchMouse, AnEdgeOfAColumnIsDraggedAndKept) {
  const int before = CurrentWindowSettings.columnWidth[1];
  const Point edge = EdgeOf(1);
  EXPECT_TRUE(IsColumnEdge(app.search, Context(), edge));
  EXPECT_FALSE(IsColumnEdge(app.search, Context(), {edge.x - 30, edge.y}));
  EXPECT_EQ(Send(Mouse::kPress, edge).capture, Capture::kTake);
  EXPECT_TRUE(IsColumnEdge(app.search, Context(), {5, 600})) << "wherever the mouse is meanwhile";
  (void)Send(Mouse::kMove, {edge.x + 25, edge.y});
  EXPECT_EQ(CurrentWindowSettings.columnWidth[1], before + 25);
  // The last move need not be where the button is let go.
  const Effects end = Send(Mouse::kRelease, {edge.x + 40, edge.y});
  EXPECT_EQ(CurrentWindowSettings.columnWidth[1], before + 40);
  EXPECT_EQ(window.Count("Placement"), 1u) << "kept";
  EXPECT_EQ(end.capture, Capture::kRelease);
  EXPECT_TRUE(picture.engine.sorts.empty());
  (void)Send(Mouse::kRelease, edge);
  EXPECT_EQ(window.Count("Placement"), 1u);
}

// Its columns end further left with each move then, and the rows have to stay where they are.
TEST_F(SearchMouse, AnEdgeIsDraggedFromTheEndOfTheColumnsToo) {
  picture.Resize(500, 700);
  (void)app.search.rows.ScrollSidewaysTo(10'000);
  const int before = CurrentWindowSettings.columnWidth[4], scrollX = app.search.rows.scrollX;
  const Point edge = EdgeOf(4);
  (void)Send(Mouse::kPress, edge);
  for (const int left : {10, 20, 20}) {
    (void)Send(Mouse::kMove, {edge.x - left, edge.y});
    EXPECT_EQ(CurrentWindowSettings.columnWidth[4], before - left);
    EXPECT_EQ(app.search.rows.scrollX, scrollX);
  }
  (void)Send(Mouse::kRelease, {edge.x - 20, edge.y});
  EXPECT_EQ(app.search.rows.scrollX, HorizontalLimit(app.search.rows.Grid())) << "within them again";
}

TEST_F(SearchMouse, WheelsScrollByNotches) {
  (void)Send({.kind = Mouse::kWheel, .at = InRow(1), .delta = -240});
  EXPECT_EQ(app.search.rows.scrollY, 200);
  EXPECT_EQ(Send({.kind = Mouse::kWheel, .at = InRow(1), .delta = 120}).tip, u"");
  EXPECT_EQ(app.search.rows.scrollY, 100);
}

TEST_F(SearchMouse, WheelsGoSidewaysWithShiftAndByTheirTilt) {
  picture.Resize(500, 700);
  (void)Send({.kind = Mouse::kWheel, .at = InRow(1), .delta = -120, .shift = true});
  const int once = app.search.rows.scrollX;
  EXPECT_GT(once, 0);
  (void)Send({.kind = Mouse::kTilt, .delta = 120});
  EXPECT_GT(app.search.rows.scrollX, once);
  EXPECT_EQ(app.search.rows.scrollY, 0);
  picture.SetView(ViewMode::kLargeIcons);
  (void)Send({.kind = Mouse::kWheel, .at = InRow(1), .delta = -120, .shift = true});
  EXPECT_GT(app.search.rows.scrollY, 0) << "icons have no sideways";
}

TEST_F(SearchMouse, AWheelOverTheSidebarTurnsItsCategoriesAlone) {
  picture.SetSidebar(true);
  picture.Resize(1'100, 300);
  const Effects effects =
      Send({.kind = Mouse::kWheel, .at = {20, app.search.headerTop + 10}, .delta = -120});
  EXPECT_EQ(app.search.sidebarScroll, 1);
  EXPECT_EQ(app.search.rows.scrollY, 0);
  EXPECT_TRUE(effects.syncsBars);
  EXPECT_EQ(window.Count("RedrawTags"), 2u) << "another category is under the mouse";
}

TEST_F(SearchMouse, AWheelOverTheSidebarLeavesAHeldThumbWhereItIs) {
  picture.SetSidebar(true);
  picture.Resize(1'100, 300);
  const Point thumb = MiddleOf(Vertical().thumb);
  (void)Send(Mouse::kPress, thumb);
  (void)Send(Mouse::kMove, {thumb.x, thumb.y + 50});
  const int64_t held = app.search.rows.scrollY;
  (void)Send({.kind = Mouse::kWheel, .at = {20, app.search.headerTop + 10}, .delta = -120});
  EXPECT_EQ(app.search.sidebarScroll, 1);
  EXPECT_EQ(app.search.rows.scrollY, held);
}

TEST_F(SearchMouse, ThumbOfTheSidebarIsDragged) {
  picture.SetSidebar(true);
  picture.Resize(1'100, 300);
  const SidebarLayout sidebar = PlaceSidebar(app.search, Context());
  const Effects press = Send(Mouse::kPress, MiddleOf(sidebar.thumb));
  EXPECT_EQ(press.capture, Capture::kTake);
  EXPECT_TRUE(press.syncsBars);
  (void)Send(Mouse::kMove, {400, 299});
  EXPECT_EQ(app.search.sidebarScroll, sidebar.scrollLimit);
  EXPECT_EQ(Send(Mouse::kRelease, {400, 299}).capture, Capture::kRelease);
  EXPECT_FALSE(app.search.list.dragsSidebar);
}

TEST_F(SearchMouse, APressOnACategoryOfTheSidebarFiltersByIt) {
  picture.SetSidebar(true);
  const SidebarLayout sidebar = PlaceSidebar(app.search, Context());
  (void)Send(Mouse::kPress, MiddleOf(sidebar.rows[2]));
  EXPECT_EQ(TheSearch().ActiveCategory, 2);
}

TEST_F(SearchMouse, TwoRowsAreDrawnAnewWhereTheMouseGoesFromOneToTheNext) {
  EXPECT_TRUE(Send(Mouse::kMove, InRow(2)).tracksMouse);
  EXPECT_EQ(app.search.rows.hoverRow, 2);
  app.search.repaint.isPending = false;
  app.search.repaint.only.reset();
  EXPECT_EQ(Send(Mouse::kMove, InRow(3)).tip, u"") << "that of the former row";
  EXPECT_EQ(Dirty(), Union(app.search.rows.PlaceOf(2), app.search.rows.PlaceOf(3)));
  app.search.repaint.isPending = false;
  EXPECT_FALSE(Send(Mouse::kMove, InRow(3, 160)).tip.has_value());
  EXPECT_FALSE(app.search.repaint.isPending) << "nothing has changed";
  EXPECT_EQ(window.Count("InvalidateList"), 0u);
}

// Names that others have changed, and values that came by another way, are told of by nobody.
TEST_F(SearchMouse, AllRowsAreDrawnAnewUnderAMouseThatMovesOnceInAWhile) {
  (void)Send(Mouse::kMove, InRow(2));
  EXPECT_TRUE(Dirty().has_value());
  nowMs += 1'000;
  (void)Send(Mouse::kMove, InRow(3));
  EXPECT_TRUE(app.search.repaint.isPending);
  EXPECT_FALSE(Dirty().has_value()) << "all of the list";
  app.search.repaint.isPending = false;
  const Rect rows = Layout().rows;
  (void)NoteListPaint(app.search, Context(), {rows.left, rows.top, rows.right, rows.top + 44}, {});
  (void)Send(Mouse::kMove, InRow(4));
  EXPECT_FALSE(Dirty().has_value()) << "a part was painted, which says nothing of the others";
  app.search.repaint.isPending = false;
  (void)NoteListPaint(app.search, Context(), picture.Context().client, {});
  (void)Send(Mouse::kMove, InRow(5));
  EXPECT_TRUE(Dirty().has_value());
}

TEST_F(SearchMouse, WhatAPaintMissedIsKnownUntilAPaintOfAll) {
  const Rect client = picture.Context().client, part = app.search.rows.PlaceOf(1);
  (void)NoteListPaint(app.search, Context(), client, {.isMissing = true});
  (void)NoteListPaint(app.search, Context(), part, {});
  EXPECT_TRUE(app.search.paintedMissing);
  (void)NoteListPaint(app.search, Context(), client, {});
  EXPECT_FALSE(app.search.paintedMissing);
  (void)NoteListPaint(app.search, Context(), part, {.isMissing = true});
  EXPECT_TRUE(app.search.paintedMissing);
}

// What comes with the next results is painted with them.
TEST_F(SearchMouse, RowsThatComeBelowTheMouseHurryNoRepaintOfAll) {
  (void)RequestListRepaint(app.search, Context(), 100);
  (void)RefreshHover(app.search, Context(), InRow(2));
  EXPECT_EQ(app.search.rows.hoverRow, 2);
  EXPECT_EQ(window.timers.at(kTimerRepaint), 100u);
  EXPECT_FALSE(Dirty().has_value()) << "all of the list";
  (void)Send(Mouse::kMove, InRow(3));
  EXPECT_EQ(window.timers.at(kTimerRepaint), 16u) << "the user waits for that";
}

TEST_F(SearchMouse, ABarUnderTheMouseIsDrawnAnew) {
  const Scrollbar bar = Vertical();
  (void)Send(Mouse::kMove, MiddleOf(bar.track));
  EXPECT_EQ(app.search.rows.hoverBar, Bar::kVertical);
  EXPECT_EQ(app.search.rows.hoverRow, -1);
  EXPECT_EQ(Dirty(), bar.track);
}

TEST_F(SearchMouse, WhatTheMouseLeavesIsDrawnAnew) {
  (void)Send(Mouse::kMove, InRow(2));
  const Effects effects = Send({.kind = Mouse::kLeave});
  EXPECT_EQ(effects.tip, u"");
  EXPECT_EQ(app.search.rows.hoverRow, -1);
  EXPECT_EQ(window.Count("InvalidateList"), 1u);
  EXPECT_EQ(window.Count("TrimSelf"), 1u);
  (void)Send({.kind = Mouse::kLeave});
  EXPECT_EQ(window.Count("InvalidateList"), 1u);
}

TEST_F(SearchMouse, ARestingMouseIsToldWhatItsCellSays) {
  Effects effects = Send(Mouse::kRest, InRow(4));
  EXPECT_EQ(app.search.rows.hoverRow, 4);
  ASSERT_TRUE(effects.tip.has_value());
  EXPECT_EQ(*effects.tip, TipOfCell(ViewMode::kList, 4, 1).text);
  EXPECT_FALSE(effects.tip->empty());
  isTipShown = true;
  EXPECT_FALSE(Send(Mouse::kRest, InRow(4)).tip.has_value());
}

TEST_F(SearchMouse, NoTipComesWhileSomethingIsHeld) {
  (void)Send(Mouse::kPress, MiddleOf(Vertical().thumb));
  EXPECT_FALSE(Send(Mouse::kRest, InRow(4)).tip.has_value());
  EXPECT_EQ(app.search.rows.hoverRow, -1);
}

TEST_F(SearchMouse, ATipAsksForWhatIsNotKnownOnceTheListRests) {
  app.search.lastScrollTick = nowMs - 10;
  (void)Send(Mouse::kRest, InRow(0, ColumnLeft(Layout(), 0, 2) + 10));
  EXPECT_TRUE(picture.engine.requested.empty());
  app.search.lastScrollTick = 0;
  const Tip tip = TipOfCell(ViewMode::kList, 0, 2);
  (void)Send(Mouse::kRest, InRow(0, ColumnLeft(Layout(), 0, 2) + 10));
  EXPECT_EQ(picture.engine.requested.size(), tip.isMissing ? 1u : 0u);
}

TEST_F(SearchMouse, RowsThatMoveBelowTheMouseTakeTheHoverOver) {
  const Effects effects = RefreshHover(app.search, Context(), InRow(5));
  EXPECT_EQ(app.search.rows.hoverRow, 5);
  EXPECT_EQ(effects.tip, u"");
  EXPECT_TRUE(effects.tracksMouse);
  EXPECT_FALSE(RefreshHover(app.search, Context(), std::nullopt).tracksMouse);
  EXPECT_EQ(app.search.rows.hoverRow, -1);
  (void)Send(Mouse::kPress, MiddleOf(Vertical().thumb));
  EXPECT_FALSE(RefreshHover(app.search, Context(), InRow(5)).tracksMouse);
  EXPECT_EQ(app.search.rows.hoverRow, -1);
}

TEST_F(SearchMouse, TheRightButtonOpensAMenuUnlessSomethingIsHeld) {
  EXPECT_TRUE(Send(Mouse::kRight, InRow(2)).menu);
  (void)Send(Mouse::kPress, MiddleOf(Vertical().thumb));
  EXPECT_FALSE(Send(Mouse::kRight, InRow(2)).menu);
  (void)Send(Mouse::kRelease, MiddleOf(Vertical().thumb));
  EXPECT_TRUE(Send(Mouse::kRight, InRow(2)).menu);
}

// Presses on a row and moves the mouse by some pixels.
class SearchDrag : public SearchMouse {
 protected:
  uint16_t PressAndMove(int dx, int dy, bool isHeld = true) {
    (void)Send(Mouse::kPress, InRow(2));
    return MoveTo({InRow(2).x + dx, InRow(2).y + dy}, isHeld);
  }
  uint16_t MoveTo(Point at, bool isHeld = true) {
    return Send({.kind = Mouse::kMove, .at = at, .isHeld = isHeld}).command;
  }
};

TEST_F(SearchDrag, BeginsOnceTheMouseHasLeftThePress) {
  EXPECT_EQ(PressAndMove(3, -3), 0);
  EXPECT_EQ(MoveTo({InRow(2).x + 4, InRow(2).y}), kCommandDrag);
  EXPECT_EQ(MoveTo({InRow(2).x + 40, InRow(2).y}), 0) << "once";
  EXPECT_EQ(PressAndMove(0, -4), kCommandDrag);
}

TEST_F(SearchDrag, DoesNotBeginWithoutTheButton) {
  (void)Send(Mouse::kPress, InRow(2));
  (void)Send(Mouse::kRelease, InRow(2));
  EXPECT_EQ(MoveTo({InRow(2).x + 40, InRow(2).y}), 0);
  EXPECT_EQ(PressAndMove(40, 0, false), 0) << "let go over another window";
  EXPECT_EQ(MoveTo({InRow(2).x + 80, InRow(2).y}), 0);
}

TEST_F(SearchDrag, DoesNotBeginBesideTheRowsNorAtABar) {
  picture.Hold(2);
  (void)Send(Mouse::kPress, InRow(5));
  EXPECT_EQ(MoveTo({InRow(5).x + 40, InRow(5).y}), 0);
  picture.Hold(1'000);
  (void)Send(Mouse::kPress, MiddleOf(Vertical().thumb));
  EXPECT_EQ(MoveTo({MiddleOf(Vertical().thumb).x, MiddleOf(Vertical().thumb).y + 40}), 0);
}

TEST_F(SearchMouse, ADoubleClickOpensTheRow) {
  (void)Send(Mouse::kPress, InRow(2));
  (void)Send(Mouse::kRelease, InRow(2));
  EXPECT_EQ(Send(Mouse::kDouble, InRow(2)).command, kCommandOpen);
  picture.Hold(1);
  EXPECT_EQ(Send(Mouse::kDouble, InRow(4)).command, 0);
}

}  // namespace
}  // namespace quilmark
