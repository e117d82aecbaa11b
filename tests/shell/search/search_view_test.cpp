#include "shell/search/search_view.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "shell/window_harness.h"

namespace quilmark {
namespace {

class SearchViewOf : public testing::Test {
 protected:
  WindowHarness harness;
  SearchView& view = harness.app.search;
};

TEST_F(SearchViewOf, ALeaveEndsWhatIsHeldAndEdited) {
  view.renaming.emplace();
  view.list.dragColumn = 1;
  const Effects effects = view.Leave(harness.Context());
  EXPECT_EQ(effects.editor, Editor::kClose);
  EXPECT_FALSE(view.renaming);
  EXPECT_EQ(view.list.dragColumn, -1);
}

TEST_F(SearchViewOf, ItsStatusStandsBelowTheTopRowAndAboveTheList) {
  view.Layout(harness.Context());
  const Rect status = view.StatusPlace(harness.Context()), list = view.ListArea(harness.Context());
  EXPECT_FALSE(IsEmpty(status));
  EXPECT_TRUE(IsEmpty(Intersection(status, list)));
  EXPECT_EQ(list.bottom, harness.app.clientHeight);
}

TEST_F(SearchViewOf, ABarIsHeldForEachThatItHides) {
  view.Layout(harness.Context());
  const std::vector<BarRange> bars = view.Bars(harness.Context());
  for (const int id : {kVerticalBar, kHorizontalBar, kSidebarBar}) {
    EXPECT_EQ(
        std::count_if(bars.begin(), bars.end(), [id](const BarRange& range) { return range.id == id; }),
        1)
        << id;
  }
}

TEST_F(SearchViewOf, AnotherScaleKeepsItsProportions) {
  view.sidebarWidth = 200;
  view.Rescale(96, 144);
  EXPECT_EQ(view.sidebarWidth, 300);
  view.Rescale(144, 96);
  EXPECT_EQ(view.sidebarWidth, 200);
}

}  // namespace
}  // namespace quilmark
