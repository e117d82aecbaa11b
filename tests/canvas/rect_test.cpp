#include "canvas/rect.h"

#include <gtest/gtest.h>

namespace quilmark {
namespace {

TEST(Rect, CentresAWindow) {
  EXPECT_EQ(CentredIn({0, 0, 1'920, 1'040}, 1'100, 700), (Point{410, 170}));
  EXPECT_EQ(CentredIn({-1'920, 0, 0, 1'040}, 1'100, 700), (Point{-1'510, 170}));
  EXPECT_EQ(CentredIn({0, 0, 800, 600}, 1'100, 701), (Point{-150, -50}));
}

TEST(Rect, IntersectsAndUnites) {
  constexpr Rect kOne = {0, 0, 10, 10}, kOther = {5, -5, 15, 5}, kFar = {20, 20, 30, 30},
                 kNone = {7, 7, 7, 9};
  EXPECT_EQ(Intersection(kOne, kOther), (Rect{5, 0, 10, 5}));
  EXPECT_EQ(Intersection(kOne, kOne), kOne);
  EXPECT_EQ(Width(Intersection(kOne, kFar)), 0);
  EXPECT_EQ(Height(Intersection(kOne, kFar)), 0);
  EXPECT_EQ(Union(kOne, kFar), (Rect{0, 0, 30, 30}));
  EXPECT_EQ(Union(kOne, kNone), kOne);
  EXPECT_EQ(Union(kNone, kFar), kFar);
}

TEST(Rect, KeepsTheCornerOfALargeWindowInTheArea) {
  EXPECT_EQ(PlaceWithin({10, 20, 810, 620}, 1'100, 701), (Point{10, 20}));
  EXPECT_EQ(PlaceWithin({0, 0, 1'920, 1'040}, 1'100, 700), (Point{410, 170}));
}

}  // namespace
}  // namespace quilmark
