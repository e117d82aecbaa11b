#include "shell/search/view_mode.h"

#include <gtest/gtest.h>

#include "config/config_directory.h"
#include "platform/text_file.h"
#include "shell/window_harness.h"

namespace quilmark {
namespace {

class ViewModes : public testing::Test {
 protected:
  static bool IsSaved(std::u16string_view line) {
    const auto text = ReadTextFile(GetConfigDirectory() + u"\\window.ini");
    return text && text->find(line) != std::u16string::npos;
  }

  WindowHarness harness;
  SearchView& view = harness.app.search;
};

TEST_F(ViewModes, AnotherOneShowsTheRowsFromTheTop) {
  view.rows.scrollY = 440;
  const Effects effects = SetViewMode(view, harness.Context(), ViewMode::kLargeIcons);
  EXPECT_EQ(CurrentWindowSettings.viewMode, 2);
  EXPECT_EQ(view.rows.scrollY, 0);
  EXPECT_TRUE(effects.relayout);
  EXPECT_TRUE(effects.paintsNow);
  EXPECT_EQ(effects.dirty, harness.Context().client);
}

TEST_F(ViewModes, AnotherOneIsSavedAtOnce) {
  harness.Carry(SetViewMode(view, harness.Context(), ViewMode::kSmallIcons));
  EXPECT_TRUE(IsSaved(u"viewMode=1"));
  harness.Carry(SetViewMode(view, harness.Context(), ViewMode::kList));
  EXPECT_TRUE(IsSaved(u"viewMode=0"));
}

TEST_F(ViewModes, AnotherOneEndsARenameAndAsksForAttributesOnceTheListRests) {
  view.renaming.emplace();
  const Effects effects = SetViewMode(view, harness.Context(), ViewMode::kSmallIcons);
  EXPECT_EQ(effects.editor, Editor::kClose);
  EXPECT_FALSE(view.renaming);
  EXPECT_EQ(harness.window.timers.count(kTimerScrollSettle), 1u);
}

TEST_F(ViewModes, TheSidebarBeginsWithItsFirstTag) {
  view.sidebarScroll = 3;
  view.list.hoverTag = 2;
  const Effects effects = SetFilterLayout(view, harness.Context(), true);
  EXPECT_TRUE(CurrentWindowSettings.sidebarLayout);
  EXPECT_EQ(view.sidebarScroll, 0);
  EXPECT_EQ(view.list.hoverTag, -1);
  EXPECT_TRUE(effects.relayout);
  EXPECT_EQ(harness.engine.recounts, 1) << "the tags get their captions";
  EXPECT_TRUE(IsSaved(u"filterLayout=sidebar"));
}

}  // namespace
}  // namespace quilmark
