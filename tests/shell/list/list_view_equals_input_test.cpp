// The list against what moves the rows of the search view, as long as both are there.
#include <gtest/gtest.h>

#include <random>

#include "search/filtered_results.h"
#include "shell/list/list_stage.h"
#include "shell/search/list_input.h"
#include "shell/search/list_layout.h"
#include "shell/search/list_scroll.h"
#include "shell/window_harness.h"

namespace quilmark {
namespace {

constexpr ListStyle kViews[] = {{.pitch = 44}, {.pitch = 84, .cell = 110}, {.pitch = 112, .cell = 150}};

// Both, over the same rows in the same place.
class ListAndInput : public testing::Test {
 protected:
  ~ListAndInput() override { DisplayCount = 0; }
  int Int(int least, int most) { return std::uniform_int_distribution<int>(least, most)(random_); }

  void Next() {
    constexpr uint32_t kScales[] = {96, 120, 144, 192};
    constexpr uint64_t kCounts[] = {0, 5, 100, 1'000'000, 1'000'000'000};
    const int view = Int(0, 2);
    stage.dpi = kScales[Int(0, 3)];
    rows.count = DisplayCount = kCounts[Int(0, 4)];
    layout = LayoutList({.view = static_cast<ViewMode>(view),
                         .clientWidth = Int(100, 1'500),
                         .clientHeight = Int(100, 1'000),
                         .headerTop = 90,
                         .dpi = stage.dpi,
                         .columns = {60, 280, 100, 160, 160, Int(200, 1'000)}});
    list.SetStyle(kViews[view]);
    list.Place(layout.rows, view == 0 ? layout.columnsWidth : 0, stage.Context());
    app.scrollY = list.scrollY;
    app.scrollX = list.scrollX;
  }

  void Press(Bar kind, const std::optional<Scrollbar>& bar, Point point) {
    const ListPress press = list.Press(point);
    ASSERT_EQ(press.bar, kind);
    app.list.dragBar = kind;
    if (Holds(bar->thumb, point)) {
      ASSERT_EQ(list.dragBar, kind);
      point = {point.x + Int(-300, 300), point.y + Int(-300, 300)};
      list.Move(point);
      MoveThumb(app, harness.window, layout, point, 1);
    } else {
      ASSERT_EQ(list.dragBar, Bar::kNone);
      MoveThumb(app, harness.window, layout, point, 1);
    }
    app.list.dragBar = Bar::kNone;
    list.Release();
  }

  void Turn() {
    const int delta = Int(-400, 400), sideways = Int(-400, 400);
    list.Wheel(delta);
    ScrollByWheel(app, harness.window, layout, delta, 1);
    list.Tilt(sideways);
    ScrollSideways(app, harness.window, layout, sideways, 1);
  }

  void Command() {
    const auto command = static_cast<ScrollCommand>(Int(0, 9));
    const int64_t position = Int(-10, 2'000'000'000);
    list.Scroll({.command = command, .position = position});
    ScrollRows(app, harness.window, layout, command, position, 1);
    list.Scroll({.isVertical = false, .command = command, .position = position % 2'000});
    ScrollColumns(app, harness.window, layout, command, position % 2'000, 1);
  }

  void Pan() {
    const Point from = {Int(0, 500), Int(0, 500)}, to = {Int(0, 500), Int(0, 500)};
    list.Pan({.at = from, .isFirst = true});
    list.Pan({.at = to});
    BeginPan(app, from);
    PanTo(app, harness.window, layout, to, 1);
  }

  void Bars() {
    const auto within = [&](const Rect& track) {
      return Point{Int(track.left, track.right - 1), Int(track.top, track.bottom - 1)};
    };
    if (const auto bar = VerticalBar(layout, app.scrollY, DisplayCount)) {
      Press(Bar::kVertical, bar, within(bar->track));
    }
    if (const auto bar = HorizontalBar(layout, app.scrollX)) {
      Press(Bar::kHorizontal, bar, within(bar->track));
    }
  }

  ListStage stage;
  NumberedRows rows;
  ListView list{rows, {}};
  ListLayout layout;
  WindowHarness harness;
  AppState& app = harness.app;

 private:
  std::mt19937 random_{11};
};

TEST_F(ListAndInput, MoveTheRowsAlike) {
  for (int i = 0; i < 8'000; ++i) {
    if (i % 20 == 0) Next();
    switch (Int(0, 3)) {
      case 0:
        Turn();
        break;
      case 1:
        Command();
        break;
      case 2:
        Pan();
        break;
      default:
        Bars();
    }
    ASSERT_EQ(list.scrollY, app.scrollY) << i;
    ASSERT_EQ(list.scrollX, app.scrollX) << i;
    const BarRange one = list.RangeOf(Bar::kVertical, 0);
    const BarRange other =
        RangeOfBar(ScrollLimit(layout, DisplayCount), Height(layout.rows), app.scrollY);
    ASSERT_EQ(std::tuple(one.last, one.page, one.position),
              std::tuple(other.last, other.page, other.position));
    const RowsInView inView = RowsToPaint(layout, app.scrollY, DisplayCount);
    ASSERT_EQ(list.InView(), (RowSpan{inView.first, inView.end}));
  }
}

}  // namespace
}  // namespace quilmark
