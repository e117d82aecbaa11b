#include "shell/view/tooltip_place.h"

#include <gtest/gtest.h>

namespace quilmark {
namespace {

TEST(Tooltip, StaysOnItsScreen) {
  const Rect area = {0, 0, 1'600, 1'000};
  EXPECT_EQ(PlaceTip({100, 100}, 200, 40, area, 96), (Point{112, 120}));
  EXPECT_EQ(PlaceTip({1'550, 990}, 200, 40, area, 96), (Point{1'400, 960}));
  EXPECT_EQ(PlaceTip({5, 5}, 5'000, 40, area, 96), (Point{0, 25}));
}

}  // namespace
}  // namespace quilmark
