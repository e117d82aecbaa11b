#include "shell/settings/picker_layout.h"

#include <gtest/gtest.h>

#include <vector>

namespace quilmark {
namespace {

std::vector<Rect> PartsOf(const PickerPlaces& places) {
  return {places.hint, places.list,   places.label,  places.field,  places.add,   places.remove,
          places.all,  places.invert, places.config, places.accept, places.cancel};
}

TEST(PlacePicker, KeepsItsPartsApartAndInside) {
  for (const uint32_t dpi : {96u, 120u, 144u, 192u}) {
    const int width = 384 * static_cast<int>(dpi) / 96, height = 480 * static_cast<int>(dpi) / 96;
    const auto parts = PartsOf(PlacePicker({0, 0, width, height}, dpi));
    for (size_t i = 0; i < parts.size(); ++i) {
      EXPECT_FALSE(IsEmpty(parts[i])) << i;
      EXPECT_TRUE(parts[i].left >= 0 && parts[i].top >= 0 && parts[i].right <= width &&
                  parts[i].bottom <= height)
          << i;
      for (size_t j = i + 1; j < parts.size(); ++j) {
        EXPECT_TRUE(IsEmpty(Intersection(parts[i], parts[j]))) << i << " and " << j;
      }
    }
  }
}

TEST(PlacePicker, LeavesTheListMostOfTheRoom) {
  const PickerPlaces places = PlacePicker({0, 0, 384, 480}, 96);
  EXPECT_GT(Height(places.list), 240);
  EXPECT_EQ(places.list.left, places.hint.left);
  EXPECT_EQ(places.cancel.right, places.list.right);
  EXPECT_EQ(places.remove.right, places.list.right);
}

TEST(PlacePicker, TurnsNothingInsideOutWithoutRoom) {
  for (const int side : {0, 1, 20, 60, 150}) {
    for (const Rect& part : PartsOf(PlacePicker({0, 0, side, side}, 96))) {
      EXPECT_LE(part.left, part.right) << side;
      EXPECT_LE(part.top, part.bottom) << side;
    }
  }
}

}  // namespace
}  // namespace quilmark
