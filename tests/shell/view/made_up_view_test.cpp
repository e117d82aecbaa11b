#include "shell/view/made_up_view.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "search/attributes/attr_jobs.h"
#include "shell/app/routing.h"
#include "shell/app/window_events.h"
#include "shell/search/search_keys.h"
#include "shell/search/search_places.h"
#include "shell/test_pump.h"
#include "shell/view/laws.h"
#include "shell/view/silent_window.h"

namespace quilmark {
namespace {

constexpr uint32_t kKeyUp = 38, kKeyDown = 40;

// The search with a thousand results, and the made-up view beside it.
class TwoViews : public testing::Test {
 protected:
  TwoViews() {
    harness_.HoldResults(1'000);
    FollowNewResults(KeepFiltered::kNo, 1'000);
    search.isBoxEnabled = true;
    TakeMadeUpView(app, view);
    pump.Create();
    pump.trace.clear();
  }

  void ShowMadeUp() {
    pump.Show(AppMode::kDuplicates);
    pump.trace.clear();
  }
  void ShowSearch() {
    pump.Show(AppMode::kSearch);
    pump.trace.clear();
  }
  void PostFinal() {
    pump.Post({WM_SEARCH_RESULTS, SearchNumber(), static_cast<int64_t>(ResultKind::kFinal)});
  }
  // A point on the first row of a list in view, and one on its bar's thumb.
  static Point InRow(const ListView& list) {
    const Rect area = list.Area();
    return {area.left + 20, area.top + 10};
  }
  static Point OnThumb(const ListView& list) {
    const Rect area = list.Area();
    return {area.right - 3, area.top + 5};
  }
  RowGrid SearchList() { return search.rows.Grid(); }
  Point OnSearchThumb() {
    const Rect thumb = VerticalBar(SearchList(), search.rows.scrollY, DisplayCount())->thumb;
    return {thumb.left + 2, thumb.top + 2};
  }

  WindowHarness harness_;

 public:
  AppState& app = harness_.app;
  SearchView& search = app.search;
  MadeUpView view;
  TestPump pump{harness_};
};

TEST_F(TwoViews, EachShowsItsControlsAlone) {
  EXPECT_TRUE(pump.HasControl(kQueryBox));
  EXPECT_TRUE(pump.HasControl(kFirstTag));
  EXPECT_FALSE(pump.HasControl(kMadeUpEdit));
  pump.Show(AppMode::kDuplicates);
  EXPECT_EQ(pump.shown.size(), 4u);
  for (const int id : {kMadeUpCombo, kMadeUpEdit, kMadeUpTag, kMadeUpSecondTag}) {
    EXPECT_TRUE(pump.HasControl(id)) << id;
  }
  EXPECT_EQ(pump.bars.size(), 1u);
  EXPECT_EQ(pump.dirty, pump.Context().client);
  pump.Show(AppMode::kSearch);
  EXPECT_TRUE(pump.HasControl(kQueryBox));
  EXPECT_FALSE(pump.HasControl(kMadeUpEdit));
  EXPECT_EQ(pump.bars.size(), 3u);
}

TEST_F(TwoViews, AModeThatIsNotThereIsNotShown) {
  pump.Show(AppMode::kAnalysis);
  EXPECT_EQ(app.appMode, AppMode::kSearch);
  EXPECT_EQ(pump.Trace(), "");
  pump.Show(AppMode::kSearch);
  EXPECT_EQ(pump.Trace(), "");
}

TEST_F(TwoViews, AControlThatIsHiddenGivesTheKeysToTheWindow) {
  pump.SetFocusTo(KeysGoTo::kSearchBox);
  ShowMadeUp();
  EXPECT_EQ(pump.focus, KeysGoTo::kWindow);
  pump.ClickControl(kMadeUpSecondTag);
  EXPECT_EQ(view.tag, kMadeUpSecondTag);
  EXPECT_EQ(pump.focus, KeysGoTo::kControl);
  ShowSearch();
  EXPECT_EQ(pump.focus, KeysGoTo::kWindow);
}

TEST_F(TwoViews, MouseAndKeysAreForTheShownOne) {
  ShowMadeUp();
  pump.Send({.kind = Mouse::kWheel, .at = InRow(view.groups), .delta = -120});
  EXPECT_EQ(view.groups.scrollY, 104);
  EXPECT_EQ(view.files.scrollY, 0);
  pump.Press(InRow(view.groups));
  EXPECT_EQ(view.groupRows.chosen, 2);
  EXPECT_TRUE(pump.Key(kKeyDown));
  EXPECT_EQ(view.groupRows.chosen, 3);
  EXPECT_EQ(view.fileRows.count, 62u);
  pump.Send({.kind = Mouse::kWheel, .at = InRow(view.files), .delta = -120});
  EXPECT_EQ(view.files.scrollY, 90);
  EXPECT_EQ(view.groups.scrollY, 104);
  EXPECT_FALSE(pump.Key(kKeyF2));
  EXPECT_EQ(search.rows.scrollY, 0);
  EXPECT_EQ(search.list.selection.focusRow, -1);
  EXPECT_EQ(pump.timers.count(kTimerScrollSettle), 0u);

  ShowSearch();
  pump.Send({.kind = Mouse::kWheel, .at = {300, 400}, .delta = -120});
  pump.Press({300, 400});
  EXPECT_EQ(search.rows.scrollY, 100);
  EXPECT_GE(search.list.selection.focusRow, 0);
  EXPECT_FALSE(pump.Key(kKeyDown));
  EXPECT_EQ(view.groupRows.chosen, 3);
  EXPECT_EQ(view.groups.scrollY, 104);
}

TEST_F(TwoViews, TheChosenGroupStaysInView) {
  ShowMadeUp();
  for (int i = 0; i < 20; ++i) pump.Key(kKeyDown);
  const Rect row = view.groups.PlaceOf(19);
  EXPECT_EQ(row.bottom, view.groups.Area().bottom);
  EXPECT_GT(view.groups.scrollY, 0);
  for (int i = 0; i < 40; ++i) pump.Key(kKeyUp);
  EXPECT_EQ(view.groupRows.chosen, 0);
  EXPECT_EQ(view.groups.scrollY, 0);
}

TEST_F(TwoViews, FinalResultsOfTheHiddenSearchLeaveTheWindowAlone) {
  search.rows.scrollY = 20'000;
  SelectOnly(search.list.selection, 500);
  ShowMadeUp();
  pump.dirty = {};
  const std::map<int, ControlPlace> shown = pump.shown;
  SupersedeSearch();
  harness_.HoldResults(30);
  EXPECT_TRUE(pump.Post({WM_SEARCH_RESULTS, SearchNumber(), 0}));

  EXPECT_EQ(search.shownGeneration, SearchNumber());
  EXPECT_EQ(search.rows.scrollY, 0);
  EXPECT_EQ(search.list.selection.focusRow, -1);
  EXPECT_EQ(pump.title, u"Quilmark - 30 results found");
  EXPECT_EQ(pump.status, u"Filter: All Files | Hits: 30");
  EXPECT_EQ(pump.timers.at(kTimerFilterCounts), 60u);
  EXPECT_EQ(pump.timers.at(kTimerWorkTrim), 1'800u);
  EXPECT_EQ(harness_.engine.filtered, 1);

  EXPECT_EQ(pump.Trace(), "");
  EXPECT_EQ(pump.dirty, Rect());
  EXPECT_EQ(pump.shown, shown);
  EXPECT_EQ(view.groupRows.chosen, -1);

  pump.Show(AppMode::kSearch);
  const RowGrid layout = SearchList();
  EXPECT_EQ(pump.bars[0].last + 1, 30 * layout.pitch);
  EXPECT_EQ(pump.bars[0].position, 0);
  EXPECT_EQ(pump.dirty, pump.Context().client);
}

TEST_F(TwoViews, TheHiddenSearchStaysWithinItsRows) {
  search.rows.scrollY = 40'000;
  search.Layout(pump.Context());
  ShowMadeUp();
  harness_.HoldResults(20);
  pump.Post({WM_SEARCH_RESULTS, SearchNumber(), static_cast<int64_t>(ResultKind::kPartial)});
  pump.Show(AppMode::kSearch);
  EXPECT_EQ(search.rows.scrollY, ScrollLimit(SearchList(), 20));
  EXPECT_EQ(pump.bars[0].position, search.rows.scrollY);
}

TEST_F(TwoViews, StaleResultsAreNobodys) {
  ShowMadeUp();
  EXPECT_FALSE(pump.Post({WM_SEARCH_RESULTS, SearchNumber() - 1, 0}));
  EXPECT_EQ(pump.title, u"before");
}

TEST_F(TwoViews, TimersOfTheHiddenSearchGoOn) {
  ShowMadeUp();
  pump.dirty = {};
  search.filterCountsPending = true;
  pump.StartTimer(kTimerFilterCounts, 60);
  EXPECT_TRUE(pump.Timer(kTimerFilterCounts));
  EXPECT_EQ(harness_.engine.recounts, 1);
  EXPECT_FALSE(search.filterCountsPending);
  EXPECT_EQ(pump.timers.count(kTimerFilterCounts), 0u);

  EXPECT_TRUE(pump.Timer(kTimerScrollSettle));
  EXPECT_EQ(harness_.engine.requested.size(), 1u);
  EXPECT_EQ(pump.timers.at(kTimerRepaint), 80u);

  search.paintedMissing = true;
  pump.StartTimer(kTimerPrewarmPoll, 500);
  EXPECT_TRUE(pump.Timer(kTimerPrewarmPoll));
  EXPECT_EQ(pump.timers.count(kTimerPrewarmPoll), 0u);

  EXPECT_FALSE(pump.Timer(kTimerRepaint)) << "the shown view has asked for nothing";
  EXPECT_FALSE(search.repaint.isPending);
  EXPECT_EQ(pump.Trace(), "");
  EXPECT_EQ(pump.dirty, Rect());

  // A repaint that was asked for meanwhile holds none back.
  ShowSearch();
  pump.Paint();
  pump.nowMs += 10'000;
  pump.Post({WM_ATTRS_UPDATED, TheSearch().hydrationGeneration.Number(), 0});
  pump.Timer(kTimerRepaint);
  EXPECT_EQ(pump.dirty, search.ListArea(pump.Context()));
}

TEST_F(TwoViews, TimersAndMessagesOfTheOtherGoOnBehindTheSearch) {
  EXPECT_TRUE(pump.Timer(kMadeUpScanTimer));
  EXPECT_EQ(view.scans, 1);
  pump.StartTimer(kMadeUpAnimationTimer, 16);
  EXPECT_TRUE(pump.Timer(kMadeUpAnimationTimer));
  EXPECT_EQ(view.frames, 0) << "in its own mode alone";
  EXPECT_EQ(pump.timers.count(kMadeUpAnimationTimer), 0u);
  EXPECT_TRUE(pump.Post({kMadeUpResults, 9}));
  EXPECT_EQ(view.groupRows.count, 9u);
  EXPECT_EQ(pump.status, u"Duplicates: some");
  EXPECT_EQ(pump.Trace(), "");
  EXPECT_EQ(search.rows.scrollY, 0);

  pump.Show(AppMode::kDuplicates);
  EXPECT_EQ(pump.bars[0].last + 1, std::max(9 * 52, Height(view.groups.Area())));
  pump.trace.clear();
  pump.Post({kMadeUpResults, 200});
  EXPECT_EQ(pump.Trace(), "dirty 88..700 | layout");
  EXPECT_EQ(pump.bars[0].last + 1, 200 * 52);
  EXPECT_TRUE(pump.Timer(kMadeUpAnimationTimer));
  EXPECT_EQ(view.frames, 1);
  EXPECT_EQ(pump.timers.at(kMadeUpAnimationTimer), 16u);
}

TEST_F(TwoViews, ANumberOfNobodyIsNotTaken) {
  EXPECT_FALSE(pump.Timer(30'999));
  EXPECT_FALSE(pump.Post({1'499}));
  app.timerNumbers = kTimerNumbers;
  EXPECT_FALSE(pump.Timer(kMadeUpScanTimer));
  EXPECT_EQ(view.scans, 0);
}

TEST_F(TwoViews, AThumbIsLetGoOfByTheSwitch) {
  ShowMadeUp();
  pump.Press(OnThumb(view.groups));
  EXPECT_TRUE(pump.hasCapture);
  pump.Send({.kind = Mouse::kMove, .at = {OnThumb(view.groups).x, 400}});
  const int64_t dragged = view.groups.scrollY;
  EXPECT_GT(dragged, 0);
  pump.trace.clear();
  pump.Show(AppMode::kSearch);
  EXPECT_EQ(std::count(pump.trace.begin(), pump.trace.end(), "lost capture"), 1);
  EXPECT_FALSE(pump.hasCapture);
  EXPECT_EQ(view.groups.dragBar, Bar::kNone);
  pump.Send({.kind = Mouse::kMove, .at = {300, 600}});
  pump.Send({.kind = Mouse::kRelease, .at = {300, 600}});
  EXPECT_EQ(search.rows.scrollY, 0);
  EXPECT_EQ(view.groups.scrollY, dragged);

  pump.Press(OnSearchThumb());
  EXPECT_TRUE(pump.hasCapture);
  EXPECT_TRUE(search.thumbDragging);
  pump.Show(AppMode::kDuplicates);
  EXPECT_FALSE(pump.hasCapture);
  EXPECT_FALSE(search.thumbDragging);
  EXPECT_EQ(search.rows.dragBar, Bar::kNone);
  pump.Send({.kind = Mouse::kMove, .at = {300, 600}});
  EXPECT_EQ(view.groups.scrollY, dragged);
  EXPECT_EQ(search.rows.scrollY, 0);
}

TEST_F(TwoViews, ASwitchEndsTheEditingOfAName) {
  SelectOnly(search.list.selection, 0);
  EXPECT_TRUE(pump.Key(kKeyF2));
  ASSERT_TRUE(pump.editor.has_value());
  EXPECT_EQ(pump.focus, KeysGoTo::kEditor);
  pump.Type(u"bad?");
  pump.Show(AppMode::kDuplicates);
  EXPECT_FALSE(pump.editor.has_value());
  EXPECT_FALSE(search.renaming.has_value());
  EXPECT_EQ(pump.errors.size(), 0u);
  EXPECT_EQ(pump.focus, KeysGoTo::kWindow);
  // What it reports late is for nobody.
  EXPECT_FALSE(pump.Control({.kind = ControlEvent::kLeft, .id = kNameEditor, .text = u"bad?"}));
  EXPECT_EQ(pump.errors.size(), 0u);
  pump.Show(AppMode::kSearch);
  EXPECT_FALSE(pump.editor.has_value());
}

TEST_F(TwoViews, BothTakeAnotherScale) {
  search.rows.scrollY = 440;
  ShowMadeUp();
  (void)view.groups.ScrollTo(104);
  pump.Press(InRow(view.groups));
  EXPECT_EQ(view.groupRows.chosen, 2);
  app.clientWidth = 1'650;
  app.clientHeight = 1'050;
  pump.TakeScale(144);
  EXPECT_EQ(view.groups.PlaceOf(2).top, view.groups.Area().top) << "the same rows stay in view";
  EXPECT_EQ(Height(view.groups.PlaceOf(2)), 78);
  EXPECT_EQ(pump.shown.at(kMadeUpEdit).place, (Rect{255, 18, 525, 75}));
  EXPECT_EQ(search.rows.scrollY, 660);
  EXPECT_EQ(search.sidebarWidth, 300);

  pump.Show(AppMode::kSearch);
  EXPECT_EQ(SearchList().pitch, 66);
  EXPECT_EQ(search.rows.scrollY, 660);
  EXPECT_EQ(pump.bars[0].position, 660);
  EXPECT_EQ(Height(pump.shown.at(kQueryBox).place), 57);
  // The hidden one now.
  app.clientWidth = 1'100;
  app.clientHeight = 700;
  pump.TakeScale(96);
  EXPECT_EQ(search.rows.scrollY, 440);
  pump.Show(AppMode::kDuplicates);
  EXPECT_EQ(view.groups.scrollY, 104);
  EXPECT_EQ(Height(view.groups.PlaceOf(2)), 52);
  EXPECT_EQ(pump.shown.at(kMadeUpEdit).place, (Rect{170, 12, 350, 50}));
}

TEST_F(TwoViews, AControlReportsToTheViewItBelongsTo) {
  EXPECT_EQ(view.day, kDayOfTheSystem) << "as it was made";
  CurrentWindowSettings.timeStart = 20'200'101;
  CurrentWindowSettings.timeEnd = 20'201'231;
  pump.Control({.kind = ControlEvent::kDay, .id = kMadeUpDay, .value = 20'230'506});
  EXPECT_EQ(view.day, 20'230'506);
  EXPECT_EQ(CurrentWindowSettings.timeStart, 20'200'101);
  EXPECT_EQ(CurrentWindowSettings.timeEnd, 20'201'231);
  pump.Control({.kind = ControlEvent::kChosen, .id = kMadeUpCombo, .value = 2});
  EXPECT_EQ(view.sorted, 2);
  EXPECT_EQ(pump.Trace(), "") << "behind the search";

  // Another program writes into a control that is hidden.
  ShowMadeUp();
  pump.Control({.kind = ControlEvent::kText, .id = kQueryBox, .text = u"typed"});
  EXPECT_EQ(TheSearch().CurrentQueryText, u"typed");
  EXPECT_EQ(view.filter, u"");
  EXPECT_EQ(pump.timers.count(TIMER_SEARCH_DEBOUNCE), 1u);
  EXPECT_EQ(pump.Trace(), "");
  pump.Control({.kind = ControlEvent::kText, .id = kMadeUpEdit, .text = u"other"});
  EXPECT_EQ(view.filter, u"other");
  EXPECT_EQ(TheSearch().CurrentQueryText, u"typed");
}

TEST_F(TwoViews, AWindowWithoutASearchBoxTakesTheKeysItself) {
  ShowMadeUp();
  pump.LeaveProgram();
  EXPECT_EQ(pump.focus, KeysGoTo::kElsewhere);
  pump.ComeBack();
  EXPECT_EQ(pump.focus, KeysGoTo::kWindow);
  EXPECT_TRUE(pump.Key(kKeyDown));
  pump.Show(AppMode::kSearch);
  pump.LeaveProgram();
  pump.ComeBack();
  EXPECT_EQ(pump.focus, KeysGoTo::kSearchBox);
}

TEST_F(TwoViews, AnIndexThatIsReadyOpensTheHiddenBox) {
  search.isBoxEnabled = false;
  ShowMadeUp();
  const Effects effects = RoutePosted(app, pump.Context(), {WM_INDEX_STATE, 0});
  EXPECT_FALSE(effects.isTaken);
  EXPECT_FALSE(effects.relayout);
  EXPECT_EQ(effects.focus, Focus::kKeep);
  pump.Show(AppMode::kSearch);
  EXPECT_TRUE(pump.shown.at(kQueryBox).isEnabled);
}

TEST_F(TwoViews, AClosingEmptiesTheHiddenSearch) {
  app.trayIconAdded = true;
  Engine().ready = true;
  pump.texts[kQueryBox] = u"typed";
  ShowMadeUp();
  app.closeBoxPressed = true;
  CloseWindowRequest(app, pump.Context());
  EXPECT_EQ(pump.texts[kQueryBox], u"");
  EXPECT_EQ(pump.Trace(), "");
  EXPECT_FALSE(pump.isVisible);
}

// The picture of the view and of its tags.
std::vector<std::string> FaultsOf(MadeUpView& view, const ViewContext& context) {
  RecordingCanvas canvas(context.client);
  view.Paint(canvas, context);
  for (const ControlPlace& place : view.Layout(context)) {
    if (place.id < kMadeUpTag) continue;
    view.PaintControl(canvas, {.id = place.id, .place = place.place}, context);
  }
  EXPECT_TRUE(canvas.IsBalanced());
  EXPECT_GT(canvas.drawn.size(), 60u);
  std::vector<std::string> faults = TextsOutsideTheirBoxes(canvas, context.fonts);
  for (const auto& more :
       {TextsOverOthers(canvas, context.fonts), UnreadableTexts(canvas, context.fonts, {})}) {
    faults.insert(faults.end(), more.begin(), more.end());
  }
  return faults;
}

TEST(MadeUpPicture, ObeysTheLaws) {
  for (const uint32_t dpi : {96u, 144u, 192u, 288u}) {
    for (const bool isDark : {false, true}) {
      for (const int percent : {85, 100, 125}) {
        SCOPED_TRACE(testing::Message() << dpi << (isDark ? " dark " : " light ") << percent);
        const Palette palette = ThemeDefaults(isDark);
        const TableMeasure fonts(dpi, percent);
        SilentWindow window;
        const ViewContext context{.dpi = dpi,
                                  .client = {0, 0, ScaleFor(dpi, 760), ScaleFor(dpi, 420)},
                                  .palette = palette,
                                  .fonts = fonts,
                                  .window = window,
                                  .status = u"Filter: All Files | Hits: 1,234,567"};
        MadeUpView view;
        view.Layout(context);
        for (int i = 0; i < 4; ++i) (void)view.OnKey({.key = kKeyDown}, context);
        (void)view.OnMouse(
            {.kind = Mouse::kMove,
             .at = Point{context.client.right - ScaleFor(dpi, 200), view.files.PlaceOf(1).top + 1}},
            context);
        EXPECT_EQ(FaultsOf(view, context), std::vector<std::string>());
        if (isDark || percent != 100) continue;  // the same places, other colours and widths
        const auto paint = [&](Canvas& canvas) { view.Paint(canvas, context); };
        EXPECT_EQ(PixelsThatTilesChange(context.client, fonts, paint), 0u);
      }
    }
  }
}

}  // namespace
}  // namespace quilmark
