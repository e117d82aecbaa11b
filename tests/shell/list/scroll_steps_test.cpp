#include "shell/list/scroll_steps.h"

#include <gtest/gtest.h>

#include <limits>
#include <utility>

namespace quilmark {
namespace {

TEST(TakeTurn, GivesWholeStepsAndKeepsTheRest) {
  WheelRest rest;
  EXPECT_EQ(TakeTurn(rest, 360), 3);
  EXPECT_EQ(TakeTurn(rest, 50), 0);
  EXPECT_EQ(TakeTurn(rest, 50), 0);
  EXPECT_EQ(TakeTurn(rest, 50), 1);
  EXPECT_EQ(rest.part, 30);
  EXPECT_EQ(TakeTurn(rest, -100), 0) << "the other way round begins anew";
  EXPECT_EQ(TakeTurn(rest, -20), -1);
  EXPECT_EQ(rest.part, 0);
}

TEST(RangeOfBar, IsInPixelsWhereTheyFit) {
  const BarRange range = RangeOfBar(105, {.page = 300, .limit = 700, .offset = 250});
  EXPECT_EQ(range.id, 105);
  EXPECT_EQ(range.last, 999);
  EXPECT_EQ(range.page, 300);
  EXPECT_EQ(range.position, 250);
  EXPECT_EQ(range.last + 1 - range.page, 700) << "the greatest position is the limit";
}

TEST(RangeOfBar, TakesLargerStepsWhereTheContentIsTooHigh) {
  const ScrollState state = {.page = 600, .limit = int64_t{1} << 40, .offset = int64_t{1} << 39};
  const int64_t step = PixelsOfBarStep(state);
  EXPECT_GT(step, 1);
  EXPECT_LE((state.limit + state.page) / step, std::numeric_limits<int32_t>::max());
  EXPECT_GT((state.limit + state.page) / (step / 2), std::numeric_limits<int32_t>::max()) << "no larger";
  EXPECT_EQ(RangeOfBar(1, state).position, state.offset / step);
}

TEST(OffsetAfter, MovesByLinesAndPages) {
  const ScrollState state = {.page = 300, .limit = 700, .offset = 250};
  const ScrollSteps steps = {.line = 44, .page = 256};
  for (const auto& [command, offset] :
       {std::pair(ScrollCommand::kLineBack, int64_t{206}),
        std::pair(ScrollCommand::kLineOn, int64_t{294}),
        std::pair(ScrollCommand::kPageBack, int64_t{-6}),
        std::pair(ScrollCommand::kPageOn, int64_t{506}), std::pair(ScrollCommand::kBegin, int64_t{0}),
        std::pair(ScrollCommand::kEnd, int64_t{700})}) {
    EXPECT_EQ(OffsetAfter(command, state, steps, 123), offset) << static_cast<uint32_t>(command);
  }
}

TEST(OffsetAfter, TakesThePositionOfTheBar) {
  const ScrollState state = {.page = 300, .limit = 700, .offset = 250};
  EXPECT_EQ(OffsetAfter(ScrollCommand::kTo, state, {}, 123), 123);
  EXPECT_EQ(OffsetAfter(ScrollCommand::kTrackTo, state, {}, -5), 0);
  const ScrollState high = {.page = 600, .limit = int64_t{1} << 40};
  EXPECT_EQ(OffsetAfter(ScrollCommand::kTo, high, {}, 1'000), 1'000 * PixelsOfBarStep(high));
}

TEST(OffsetAfter, MovesNothingAtTheEndOfADragOrByAnUnknownCommand) {
  const ScrollState state = {.page = 300, .limit = 700, .offset = 250};
  EXPECT_FALSE(OffsetAfter(ScrollCommand::kDone, state, {.line = 44, .page = 256}, 123));
  EXPECT_FALSE(OffsetAfter(static_cast<ScrollCommand>(77), state, {.line = 44, .page = 256}, 123));
}

}  // namespace
}  // namespace quilmark
