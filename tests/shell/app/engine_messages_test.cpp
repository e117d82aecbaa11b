#include "shell/app/engine_messages.h"

#include <gtest/gtest.h>

#include "shell/window_harness.h"

namespace quilmark {
namespace {

// What results_messages_test.cpp sees of these messages by way of the routing is not repeated here.
class EngineMessages : public testing::Test {
 protected:
  bool Take(uint32_t number, uint64_t first = 0, int64_t second = 0) {
    return harness.Carry(OnEngineMessage(harness.app, harness.Context(), {number, first, second}));
  }

  WindowHarness harness;
  RecordingWindow& window = harness.window;
};

TEST_F(EngineMessages, OfOthersAreNotTaken) {
  for (const uint32_t number : {WM_SEARCH_RESULTS, WM_FILTER_RESULTS, WM_ATTRS_UPDATED, 0u}) {
    EXPECT_FALSE(Take(number)) << number;
  }
  EXPECT_TRUE(window.calls.empty());
}

TEST_F(EngineMessages, TellHowManyVolumesWereRefreshed) {
  EXPECT_TRUE(Take(WM_NON_NTFS_REFRESHED, 3, 1));
  EXPECT_EQ(window.status, u"Refreshed 3 non-NTFS volumes, 1 failed, see debug output");
  EXPECT_TRUE(Take(WM_NON_NTFS_REFRESHED, 2, 0));
  EXPECT_EQ(window.status, u"Refreshed 2 non-NTFS volume indexes, see debug output");
  EXPECT_TRUE(Take(WM_NON_NTFS_REFRESHED, 0, 4));
  EXPECT_EQ(window.status, u"Failed to refresh non-NTFS volume indexes, see debug output");
}

TEST_F(EngineMessages, OfASyncWithoutAVolumeHaveTheDrivesLookedForAgain) {
  Engine().ready = false;
  EXPECT_TRUE(Take(WM_VOLUMES_SYNCED));
  EXPECT_EQ(window.timers.count(kTimerHiddenStart), 1u);
  EXPECT_TRUE(harness.app.syncRetryArmed);
}

TEST_F(EngineMessages, LookForDrivesAgainOnceForAllThatAsk) {
  RetrySyncLater(harness.app, window);
  ASSERT_EQ(window.timers.count(kTimerHiddenStart), 1u);
  window.timers.clear();
  RetrySyncLater(harness.app, window);
  EXPECT_TRUE(window.timers.empty()) << "the timer goes on as it was started";
}

}  // namespace
}  // namespace quilmark
