#include "canvas/rect.h"

#include <gtest/gtest.h>

namespace quilmark {
namespace {

TEST(Rect, CentresAWindow) {
  EXPECT_EQ(CentredIn({0, 0, 1'920, 1'040}, 1'100, 700), (Point{410, 170}));
  EXPECT_EQ(CentredIn({-1'920, 0, 0, 1'040}, 1'100, 700), (Point{-1'510, 170}));
  EXPECT_EQ(CentredIn({0, 0, 800, 600}, 1'100, 701), (Point{-150, -50}));
}

TEST(Rect, KeepsTheCornerOfALargeWindowInTheArea) {
  EXPECT_EQ(PlaceWithin({10, 20, 810, 620}, 1'100, 701), (Point{10, 20}));
  EXPECT_EQ(PlaceWithin({0, 0, 1'920, 1'040}, 1'100, 700), (Point{410, 170}));
}

}  // namespace
}  // namespace quilmark
