#include "shell/app/trim.h"

#include <gtest/gtest.h>

namespace quilmark {
namespace {

TEST(Trim, WaitsThirtySecondsForTheNext) {
  EXPECT_FALSE(MayTrim({.nowMs = 129'999, .lastTrimMs = 100'000}));
  EXPECT_TRUE(MayTrim({.nowMs = 130'000, .lastTrimMs = 100'000}));
}

TEST(Trim, LeavesAWindowAloneThatTheUserWorksIn) {
  EXPECT_FALSE(MayTrim({.nowMs = 100'000, .isForeground = true, .lastInputMs = 95'001}));
  EXPECT_TRUE(MayTrim({.nowMs = 100'000, .isForeground = true, .lastInputMs = 95'000}));
}

TEST(Trim, TakesNoNoteOfInputElsewhere) {
  EXPECT_TRUE(MayTrim({.nowMs = 100'000, .isForeground = false, .lastInputMs = 99'999}));
}

TEST(Trim, GoesOnWhereTheLastInputIsUnknown) {
  EXPECT_TRUE(MayTrim({.nowMs = 100'000, .isForeground = true}));
}

TEST(Trim, FollowsTheInputsCounterAround) {
  const uint64_t now = 0x1'0000'0000 + 1'000;
  EXPECT_FALSE(MayTrim({.nowMs = now, .isForeground = true, .lastInputMs = 0xFFFF'F830}));  // 3 s
  EXPECT_TRUE(MayTrim({.nowMs = now, .isForeground = true, .lastInputMs = 0xFFFF'0000}));
}

}  // namespace
}  // namespace quilmark
