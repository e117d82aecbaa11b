#include "shell/search/search_keys.h"

#include <gtest/gtest.h>

#include "shell/window_harness.h"

namespace quilmark {
namespace {

class SearchKeys : public testing::Test {
 protected:
  WindowHarness harness;
  SearchView& view = harness.app.search;
};

TEST_F(SearchKeys, TabLeavesTheListForTheSearchBox) {
  const Effects effects = TakeListKey(view, harness.Context(), kKeyTab);
  EXPECT_TRUE(effects.isTaken);
  EXPECT_EQ(effects.focus, Focus::kSearchBox);
}

TEST_F(SearchKeys, F2WithoutARowOpensNoEditor) {
  const Effects effects = TakeListKey(view, harness.Context(), kKeyF2);
  EXPECT_EQ(effects.editor, Editor::kKeep);
  EXPECT_FALSE(view.renaming);
}

TEST_F(SearchKeys, OtherKeysAreNotTakenFromTheList) {
  for (const uint32_t key : {kKeyEnter, kKeyEscape, 33u, 65u}) {
    EXPECT_FALSE(TakeListKey(view, harness.Context(), key).isTaken) << key;
  }
}

TEST_F(SearchKeys, EnterInTheBoxDoesNotWaitForThePause) {
  harness.window.StartTimer(TIMER_SEARCH_DEBOUNCE, 260);
  EXPECT_TRUE(TakeSearchKey(harness.Context(), kKeyEnter, u"report").isTaken);
  EXPECT_EQ(harness.window.timers.count(TIMER_SEARCH_DEBOUNCE), 0u);
}

TEST_F(SearchKeys, TheBoxKeepsAllKeysButEnterAndTheEscapeOfAContentQuery) {
  for (const uint32_t key : {kKeyTab, kKeyF2, 37u, 65u}) {
    EXPECT_FALSE(TakeSearchKey(harness.Context(), key, u"s:text").isTaken) << key;
  }
  EXPECT_FALSE(TakeSearchKey(harness.Context(), kKeyEscape, u"report").isTaken);
  EXPECT_TRUE(TakeSearchKey(harness.Context(), kKeyEscape, u"s:text").isTaken);
  EXPECT_EQ(harness.window.status, u"Content search canceled.");
}

}  // namespace
}  // namespace quilmark
