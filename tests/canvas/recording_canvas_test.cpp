#include "support/recording_canvas.h"

#include <gtest/gtest.h>

#include "canvas/table_measure.h"

namespace quilmark {
namespace {

constexpr Rect kPlace = {10, 0, 110, 30};
constexpr std::u16string_view kText = u"3.40 MB";

Rect InkOfText(const TextMeasure& fonts, Align align, std::u16string_view text = kText) {
  RecordingCanvas canvas({0, 0, 200, 30});
  canvas.Text(kPlace, text, {.align = align, .cut = Cut::kPath}, {});
  EXPECT_EQ(canvas.drawn.at(0).style.cut, Cut::kPath);
  return InkOf(canvas.drawn.at(0), fonts);
}

TEST(RecordingCanvas, KnowsWhereLettersStand) {
  const TableMeasure fonts(96);
  const int width = fonts.WidthOf(FontRole::kList, kText);
  ASSERT_LT(width, Width(kPlace));
  EXPECT_EQ(InkOfText(fonts, Align::kLeft).left, 10);
  EXPECT_EQ(InkOfText(fonts, Align::kLeft).right, 10 + width);
  EXPECT_EQ(InkOfText(fonts, Align::kRight).right, 110);
  EXPECT_EQ(InkOfText(fonts, Align::kRight).left, 110 - width);
  EXPECT_EQ(InkOfText(fonts, Align::kCentre).left, (10 + 110 - width) / 2);
  for (const Align align : {Align::kLeft, Align::kCentre, Align::kRight}) {
    const Rect ink = InkOfText(fonts, align, u"longer than there is room for in a place like this");
    EXPECT_EQ(ink.left, 10);
    EXPECT_EQ(ink.right, 110);
  }
}

TEST(RasterCanvas, PaintsLettersWhereTheyStand) {
  const TableMeasure fonts(96);
  std::vector<Color> pixels(200 * 30, 0xFFFFFF);
  RasterCanvas canvas({0, 0, 200, 30}, fonts);
  canvas.pixels = &pixels;
  canvas.width = 200;
  canvas.Text(kPlace, kText, {.align = Align::kRight}, {});
  const auto inked = [&](int x) { return pixels[static_cast<size_t>(15 * 200 + x)] != 0xFFFFFF; };
  EXPECT_TRUE(inked(109));
  EXPECT_FALSE(inked(110));
  EXPECT_FALSE(inked(110 - fonts.WidthOf(FontRole::kList, kText) - 1));
}

}  // namespace
}  // namespace quilmark
