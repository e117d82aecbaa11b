#include "shell/list/repaint_request.h"

#include <gtest/gtest.h>

#include "canvas/table_measure.h"
#include "shell/view/silent_window.h"
#include "shell/view/window_ids.h"

namespace quilmark {
namespace {

// Notes how often the timer of repaints is started, and with which delay.
struct TimedWindow : SilentWindow {
  void StartTimer(uint32_t id, uint32_t delayMs) override {
    EXPECT_EQ(id, kTimerRepaint);
    delays.push_back(delayMs);
  }
  std::vector<uint32_t> delays;
};

class Repaints : public testing::Test {
 protected:
  ViewContext At(uint64_t nowMs) {
    return {.palette = palette, .fonts = fonts, .window = window, .nowMs = nowMs};
  }
  Rect All(uint64_t nowMs, uint32_t delayMs = 100) {
    return RequestRepaint(request, At(nowMs), kArea, delayMs).dirty;
  }
  Rect Part(uint64_t nowMs, const Rect& part, uint32_t delayMs = 100) {
    return RequestRepaintOf(request, At(nowMs), kArea, part, delayMs).dirty;
  }

  static constexpr Rect kArea = {0, 90, 1'000, 700};
  TimedWindow window;
  TableMeasure fonts{96};
  Palette palette = ThemeDefaults(false);
  RepaintRequest request;
};

TEST_F(Repaints, AreMadeOnceForABurst) {
  for (uint64_t i = 0; i < 5; ++i) EXPECT_TRUE(IsEmpty(All(1'000 + i)));
  EXPECT_EQ(window.delays, std::vector<uint32_t>(5, 100));
  EXPECT_EQ(TakeRepaint(request, kArea), kArea);
  EXPECT_TRUE(IsEmpty(TakeRepaint(request, kArea))) << "it was answered";
}

TEST_F(Repaints, OfPartsAreOfAllPartsTogether) {
  EXPECT_TRUE(IsEmpty(Part(1'000, {0, 100, 50, 120})));
  EXPECT_TRUE(IsEmpty(Part(1'001, {0, 300, 80, 320})));
  EXPECT_EQ(TakeRepaint(request, kArea), (Rect{0, 100, 80, 320}));
}

TEST_F(Repaints, OfAllAndOfAPartAreOfAllInEitherOrder) {
  EXPECT_TRUE(IsEmpty(All(1'000)));
  EXPECT_TRUE(IsEmpty(Part(1'001, {0, 100, 50, 120})));
  EXPECT_EQ(TakeRepaint(request, kArea), kArea);
  EXPECT_TRUE(IsEmpty(Part(2'000, {0, 100, 50, 120})));
  EXPECT_TRUE(IsEmpty(All(2'001)));
  EXPECT_EQ(TakeRepaint(request, kArea), kArea);
}

TEST_F(Repaints, ThatArePutOffForTheirWholeDelayAreMadeAtOnce) {
  EXPECT_TRUE(IsEmpty(All(1'000, 40)));
  EXPECT_TRUE(IsEmpty(All(1'039, 40)));
  EXPECT_EQ(All(1'040, 40), kArea);
  EXPECT_TRUE(IsEmpty(All(1'041, 40))) << "the next frame has not passed";
  EXPECT_EQ(TakeRepaint(request, kArea), kArea);
}

TEST_F(Repaints, ComeNoMoreOftenThanFrames) {
  EXPECT_TRUE(IsEmpty(All(1'000, 1)));
  EXPECT_TRUE(IsEmpty(All(1'015, 1)));
  EXPECT_EQ(All(1'016, 1), kArea);
}

}  // namespace
}  // namespace quilmark
