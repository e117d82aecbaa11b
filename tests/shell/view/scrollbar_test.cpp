#include "shell/view/scrollbar.h"

#include <gtest/gtest.h>

namespace quilmark {
namespace {

constexpr Rect kTrack = {10, 100, 20, 300};

TEST(PlaceThumb, IsInProportionAndMovesAlongTheTrack) {
  const auto thumbAt = [](int64_t offset) {
    return PlaceThumb(kTrack, Bar::kVertical, {.page = 50, .limit = 150, .offset = offset}, 24).thumb;
  };
  EXPECT_EQ(thumbAt(0), (Rect{10, 100, 20, 150}));
  EXPECT_EQ(thumbAt(75), (Rect{10, 175, 20, 225}));
  EXPECT_EQ(thumbAt(150), (Rect{10, 250, 20, 300}));
  EXPECT_EQ(thumbAt(-9), thumbAt(0));
  EXPECT_EQ(thumbAt(900), thumbAt(150));
}

TEST(PlaceThumb, LiesAlongAHorizontalTrack) {
  const Scrollbar bar =
      PlaceThumb({0, 5, 400, 15}, Bar::kHorizontal, {.page = 100, .limit = 100, .offset = 100}, 24);
  EXPECT_EQ(bar.thumb, (Rect{200, 5, 400, 15}));
}

TEST(PlaceThumb, IsNeverTooSmallToHoldNorLongerThanItsTrack) {
  const ScrollState huge = {.page = 1, .limit = 10'000'000'000, .offset = 10'000'000'000};
  EXPECT_EQ(PlaceThumb(kTrack, Bar::kVertical, huge, 24).thumb, (Rect{10, 276, 20, 300}));
  EXPECT_EQ(PlaceThumb({10, 100, 20, 112}, Bar::kVertical, huge, 24).thumb, (Rect{10, 100, 20, 112}));
  EXPECT_EQ(PlaceThumb({10, 100, 20, 90}, Bar::kVertical, huge, 24).thumb, (Rect{10, 100, 20, 100}));
}

TEST(PlaceThumb, FillsTheTrackWhereAllIsInView) {
  EXPECT_EQ(PlaceThumb(kTrack, Bar::kVertical, {.page = 5, .limit = 0, .offset = 3}, 24).thumb, kTrack);
}

}  // namespace
}  // namespace quilmark
