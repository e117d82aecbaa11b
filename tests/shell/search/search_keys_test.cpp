#include "shell/search/search_keys.h"

#include <gtest/gtest.h>

#include "shell/view/commands.h"
#include "shell/window_harness.h"

namespace quilmark {
namespace {

class SearchKeys : public testing::Test {
 protected:
  WindowHarness harness;
};

TEST_F(SearchKeys, TabLeavesTheListForTheSearchBox) {
  const Effects effects = TakeListKey({.key = kKeyTab});
  EXPECT_TRUE(effects.isTaken);
  EXPECT_EQ(effects.focus, Focus::kSearchBox);
}

TEST_F(SearchKeys, OfTheListAskForCommands) {
  EXPECT_EQ(TakeListKey({.key = kKeyEnter}).command, kCommandOpen);
  EXPECT_EQ(TakeListKey({.key = kKeyDelete}).command, kCommandRecycle);
  EXPECT_EQ(TakeListKey({.key = kKeyF2}).command, kCommandRename);
  EXPECT_EQ(TakeListKey({.key = u'C', .ctrl = true}).command, kCommandCopy);
  EXPECT_EQ(TakeListKey({.key = u'X', .ctrl = true}).command, kCommandCut);
  EXPECT_EQ(TakeListKey({.key = u'D', .ctrl = true}).command, kCommandDelete);
}

TEST_F(SearchKeys, OtherKeysAreNotTakenFromTheList) {
  constexpr uint32_t kKeyShift = 16, kKeyPageDown = 34, kKeyDown = 40;
  for (const uint32_t key : {kKeyShift, kKeyEscape, kKeyPageDown, kKeyDown, uint32_t{u'A'},
                             uint32_t{u'C'}, uint32_t{u'X'}, uint32_t{u'D'}}) {
    const Effects effects = TakeListKey({.key = key});
    EXPECT_FALSE(effects.isTaken) << key;
    EXPECT_EQ(effects.command, 0) << key;
  }
  for (const char16_t letter : u"ABEFVZ") {
    EXPECT_FALSE(TakeListKey({.key = letter, .ctrl = true}).isTaken) << static_cast<int>(letter);
  }
}

TEST_F(SearchKeys, AKeyThatIsHeldDownRunsItsCommandOnce) {
  const Effects effects = TakeListKey({.key = kKeyEnter, .isRepeat = true});
  EXPECT_TRUE(effects.isTaken);
  EXPECT_EQ(effects.command, 0);
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
