// What a list says has to be drawn anew is all that looks different, whatever is done to it; and drawing
// it takes nothing from the heap.
#include <gtest/gtest.h>

#include <functional>
#include <random>
#include <vector>

#include "shell/allocation_count.h"
#include "shell/list/list_stage.h"

namespace quilmark {
namespace {

// A list on a picture that is painted where it is said to be dirty, and there alone.
class PaintedList {
 public:
  explicit PaintedList(const ListStyle& style, int contentWidth = 0) : list(rows, style) {
    list.Place({10, 15, 140, 100}, contentWidth, stage.Context());
    canvas_.width = stage.client.right;
    Paint(stage.client, shown);
  }

  // Pixels of the picture that are not as they would be if all of it were painted.
  size_t WrongAfter(const Effects& effects) {
    PaintDirty(effects);
    Paint(stage.client, fresh_);
    size_t wrong = 0;
    for (size_t i = 0; i < fresh_.size(); ++i) wrong += fresh_[i] != shown[i] ? 1 : 0;
    return wrong;
  }
  void PaintDirty(const Effects& effects) { Paint(effects.dirty, shown); }

  ListStage stage{.client = {0, 0, 160, 120}};
  NumberedRows rows;
  ListView list;
  std::vector<Color> shown = std::vector<Color>(160 * 120);

 private:
  void Paint(const Rect& place, std::vector<Color>& pixels) {
    canvas_.pixels = &pixels;
    const CanvasClip clip(canvas_, place);
    canvas_.Fill(stage.client, stage.palette.surface);
    list.Paint(canvas_, stage.Context(), stage.Bars());
  }

  std::vector<Color> fresh_ = shown;
  RasterCanvas canvas_{stage.client, stage.fonts};
};

Effects AnyEvent(ListView& list, std::mt19937& random) {
  const auto any = [&](int least, int most) {
    return std::uniform_int_distribution<int>(least, most)(random);
  };
  const Point at = {any(0, 159), any(0, 119)};
  switch (any(0, 9)) {
    case 0:
      return list.Press(at).effects;
    case 1:
      return list.Press({any(140, 150), any(15, 100)}).effects;
    case 2:
      return any(0, 1) == 0 ? list.Release() : list.Lose();
    case 3:
      return list.Leave();
    case 4:
      return list.Wheel(any(-300, 300));
    case 5:
      return list.Tilt(any(-300, 300));
    case 6:
      return list.Scroll({.isVertical = any(0, 1) == 0,
                          .command = static_cast<ScrollCommand>(any(0, 9)),
                          .position = any(-10, 5'000)});
    case 7:
      return list.Pan({.at = at, .isFirst = any(0, 3) == 0});
    default:
      return list.Move(at);
  }
}

class ListDirt : public testing::TestWithParam<int> {};

TEST_P(ListDirt, HoldsAllThatLooksDifferent) {
  constexpr ListStyle kStyles[] = {
      {.pitch = 22},
      {.pitch = 30, .cell = 40},
      {.pitch = 30, .notchLines = 3, .bar = 11, .barTakesRoom = true, .trackDrags = true}};
  PaintedList painted(kStyles[GetParam()], 300);
  std::mt19937 random(static_cast<uint32_t>(GetParam()));
  for (int i = 0; i < 600; ++i) {
    ASSERT_EQ(painted.WrongAfter(AnyEvent(painted.list, random)), 0u) << i;
    const RowGrid grid = painted.list.Grid();
    ASSERT_EQ(painted.list.scrollY, ClampScroll(grid, painted.list.scrollY, painted.rows.count));
    ASSERT_EQ(painted.list.scrollX, ClampHorizontal(grid, painted.list.scrollX));
  }
}

INSTANTIATE_TEST_SUITE_P(Styles, ListDirt, testing::Values(0, 1, 2));

TEST(ListDirt, IsTwoRowsForAMouseThatGoesFromOneToTheNext) {
  PaintedList painted({.pitch = 22});
  (void)painted.list.Move({30, 20});
  const Rect dirty = painted.list.Move({30, 40}).dirty;
  EXPECT_EQ(dirty, (Rect{10, 15, 140, 59}));
  painted.rows.painted = 0;
  painted.PaintDirty({.dirty = dirty});
  EXPECT_EQ(painted.rows.painted, 2);
}

// Operator new[] may take what it gives from operator new: both count then.
TEST(AllocationCount, CountsAllocations) {
  const auto counted = [](const std::function<void()>& take) {
    const AllocationCount count;
    take();
    return count.Value();
  };
  EXPECT_EQ(counted([] {}), 0u);
  EXPECT_EQ(counted([] { ::operator delete(::operator new(1)); }), 1u);
  EXPECT_GE(counted([] { ::operator delete[](::operator new[](1)); }), 1u);
  EXPECT_EQ(counted([] { const std::vector<int> some(3); }), 1u);
}

TEST(ListView, TakesNothingFromTheHeapOnceItWasPainted) {
  PaintedList painted({.pitch = 22}, 300);
  std::mt19937 random(1);
  size_t taken = 0;
  for (int i = 0; i < 200; ++i) {
    const AllocationCount count;
    painted.PaintDirty(AnyEvent(painted.list, random));
    taken += count.Value();
  }
  EXPECT_EQ(taken, 0u);
  EXPECT_GT(painted.rows.painted, 200) << "it was painted";
}

}  // namespace
}  // namespace quilmark
