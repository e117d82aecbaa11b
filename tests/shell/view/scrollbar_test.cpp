#include "shell/view/scrollbar.h"

#include <gtest/gtest.h>

#include <limits>

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

TEST(DropListBar, HasAThumbInProportionToItsPage) {
  const Rect place = {83, 0, 100, 200};
  const Scrollbar bar = *DropListBar(place, {.maximum = 19, .page = 10, .position = 10}, 96);
  EXPECT_EQ(bar.track, place);
  EXPECT_EQ(bar.thumb, (Rect{83, 100, 100, 200}));
  const Scrollbar large = *DropListBar(place, {.maximum = 9'999, .page = 10}, 96);
  EXPECT_EQ(large.thumb, (Rect{83, 0, 100, 18}));
}

TEST(DropListBar, IsAtLeastFiveWideAtTheRightEdge) {
  const Scrollbar bar = *DropListBar({98, 0, 100, 200}, {.maximum = 19, .page = 10}, 192);
  EXPECT_EQ(bar.track.left, 90);
  EXPECT_EQ(bar.track.right, 100);
}

TEST(DropListBar, IsAbsentWhereEverythingFits) {
  const Rect place = {83, 0, 100, 200};
  EXPECT_FALSE(DropListBar(place, {.maximum = 9, .page = 10}, 96));
  EXPECT_FALSE(DropListBar(place, {}, 96));
  EXPECT_FALSE(DropListBar({83, 10, 100, 10}, {.maximum = 19, .page = 10}, 96));
}

TEST(DropListBar, StandsWhateverTheSystemSays) {
  constexpr int kMost = std::numeric_limits<int>::max(), kLeast = std::numeric_limits<int>::min();
  for (const BarState& state : {BarState{kLeast, kMost, kMost, kLeast}, BarState{0, kMost, 1, kMost},
                                BarState{0, -1, -1, 5}, BarState{5, 1, 2, 9}}) {
    const auto bar = DropListBar({0, 0, 17, 200}, state, 96);
    if (!bar) continue;
    EXPECT_GE(bar->thumb.top, 0);
    EXPECT_LE(bar->thumb.bottom, 200);
  }
}

}  // namespace
}  // namespace quilmark
