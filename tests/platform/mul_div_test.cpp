#include "platform/mul_div.h"

#include <gtest/gtest.h>

namespace quilmark {
namespace {

constexpr int kMost = std::numeric_limits<int>::max();
constexpr int kLeast = std::numeric_limits<int>::min();

TEST(MulDiv, ScalesExactly) {
  EXPECT_EQ(MulDiv(1000, 144, 96), 1500);
  EXPECT_EQ(MulDiv(1500, 96, 144), 1000);
  EXPECT_EQ(MulDiv(0, 144, 96), 0);
}

TEST(MulDiv, RoundsHalvesAwayFromZero) {
  EXPECT_EQ(MulDiv(1, 1, 2), 1);
  EXPECT_EQ(MulDiv(-1, 1, 2), -1);
  EXPECT_EQ(MulDiv(1, -1, 2), -1);
  EXPECT_EQ(MulDiv(-3, 1, -2), 2);
  EXPECT_EQ(MulDiv(5, 144, 96), 8);  // 7.5
  EXPECT_EQ(MulDiv(-5, 144, 96), -8);
}

TEST(MulDiv, RoundsToTheNearest) {
  EXPECT_EQ(MulDiv(1, 1, 3), 0);
  EXPECT_EQ(MulDiv(2, 1, 3), 1);
  EXPECT_EQ(MulDiv(-2, 1, 3), -1);
}

TEST(MulDiv, KeepsALargeProductInBetween) {
  EXPECT_EQ(MulDiv(kMost, 96, 96), kMost);
  EXPECT_EQ(MulDiv(kMost, kMost, kMost), kMost);
  EXPECT_EQ(MulDiv(kLeast, kMost, kLeast), kMost);
}

TEST(MulDiv, GivesMinusOneWhereThereIsNoAnswer) {
  EXPECT_EQ(MulDiv(5, 5, 0), -1);
  EXPECT_EQ(MulDiv(kMost, 2, 1), -1);
  EXPECT_EQ(MulDiv(kLeast, kLeast, 1), -1);
  EXPECT_EQ(MulDiv(kLeast, 2, 1), -1);
}

}  // namespace
}  // namespace quilmark
