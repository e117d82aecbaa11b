#include "canvas/scale.h"

#include <gtest/gtest.h>

namespace quilmark {
namespace {

TEST(ScaleFor, GivesTheLengthItselfAt96Dpi) {
  for (const int length : {-30, 0, 1, 44, 10'000}) EXPECT_EQ(ScaleFor(96, length), length);
}

TEST(ScaleFor, RoundsToTheNearestPixel) {
  EXPECT_EQ(ScaleFor(144, 10), 15);
  EXPECT_EQ(ScaleFor(120, 1), 1);
  EXPECT_EQ(ScaleFor(120, 3), 4);
  EXPECT_EQ(ScaleFor(144, 1), 2);
  EXPECT_EQ(ScaleFor(192, -7), -14);
}

TEST(ScaleFor, TakesNoDpiFor96) { EXPECT_EQ(ScaleFor(0, 44), 44); }

}  // namespace
}  // namespace quilmark
