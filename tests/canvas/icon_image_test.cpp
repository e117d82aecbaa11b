#include "canvas/icon_image.h"

#include <gtest/gtest.h>

namespace quilmark {
namespace {

Rect PlaceOf(int width, int height, const Rect& room) { return IconImage(width, height).PlaceIn(room); }

TEST(IconImage, FillsASquareWithASquare) {
  EXPECT_EQ(PlaceOf(1, 1, {10, 20, 26, 36}), (Rect{10, 20, 26, 36}));
  EXPECT_EQ(PlaceOf(256, 256, {10, 20, 26, 36}), (Rect{10, 20, 26, 36}));
}

TEST(IconImage, KeepsItsRatioInTheMiddle) {
  EXPECT_EQ(PlaceOf(96, 48, {0, 0, 48, 48}), (Rect{0, 12, 48, 36}));
  EXPECT_EQ(PlaceOf(48, 96, {0, 0, 48, 48}), (Rect{12, 0, 36, 48}));
  EXPECT_EQ(PlaceOf(24, 12, {0, 0, 48, 48}), (Rect{0, 12, 48, 36})) << "small ones grow";
}

TEST(IconImage, IsNeverEmptyAndNeverLeavesItsRoom) {
  for (const int side : {1, 2, 7, 48}) {
    for (const int width : {1, 2, 3, 1'000, 30'000}) {
      for (const int height : {1, 2, 3, 1'000, 30'000}) {
        const Rect room = {100, 200, 100 + side, 200 + side};
        const Rect place = PlaceOf(width, height, room);
        EXPECT_FALSE(IsEmpty(place)) << side << " " << width << " " << height;
        EXPECT_EQ(Intersection(place, room), place) << side << " " << width << " " << height;
      }
    }
  }
}

TEST(Picture, ShrinksIntoABoxByTheSmallerRatioAndNeverGrows) {
  EXPECT_EQ(ShrunkInto({48, 48}, 48), (PictureSize{48, 48}));
  EXPECT_EQ(ShrunkInto({10, 3}, 48), (PictureSize{10, 3}));
  EXPECT_EQ(ShrunkInto({96, 48}, 48), (PictureSize{48, 24}));
  EXPECT_EQ(ShrunkInto({20, 80}, 48), (PictureSize{12, 48}));
  EXPECT_EQ(ShrunkInto({30'000, 2}, 48), (PictureSize{48, 1}));
  EXPECT_EQ(ShrunkInto({1, 2'000'000'000}, 48), (PictureSize{1, 48}));
}

}  // namespace
}  // namespace quilmark
