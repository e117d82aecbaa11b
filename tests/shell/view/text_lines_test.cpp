#include "shell/view/text_lines.h"

#include <gtest/gtest.h>

#include "canvas/table_measure.h"
#include "shell/view/silent_window.h"
#include "support/recording_canvas.h"

namespace quilmark {
namespace {

class TextLines : public testing::Test {
 protected:
  // The lines that are drawn of the text, in a place so wide and so many lines high.
  std::vector<Drawn> LinesOf(std::u16string_view text, int width, int lines, const Marks& marks = {}) {
    const Rect place = {100, 50, 100 + width, 50 + lines * height};
    const ViewContext context = {.client = place, .palette = palette, .fonts = fonts, .window = window};
    RecordingCanvas canvas(place);
    PaintLines(canvas, context, place, text, {.font = FontRole::kSmall}, marks);
    return canvas.drawn;
  }
  int WidthOf(std::u16string_view text) const { return fonts.WidthOf(FontRole::kSmall, text); }

  SilentWindow window;
  TableMeasure fonts{96};
  Palette palette = ThemeDefaults(false);
  int height = fonts.LineHeight(FontRole::kSmall);
};

TEST_F(TextLines, AShortTextIsOneLineInTheMiddle) {
  const auto lines = LinesOf(u"name", 100, 2);
  ASSERT_EQ(lines.size(), 1u);
  EXPECT_EQ(lines[0].text, u"name");
  EXPECT_EQ(lines[0].place.top, 50);
  EXPECT_EQ(lines[0].place.left, 100 + (100 - WidthOf(u"name")) / 2);
}

TEST_F(TextLines, ALongTextBreaksAtABlankWhichIsNotDrawn) {
  const auto lines = LinesOf(u"first second", WidthOf(u"first secon"), 3);
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_EQ(lines[0].text, u"first");
  EXPECT_EQ(lines[1].text, u"second");
  EXPECT_EQ(lines[1].place.top, 50 + height);
}

TEST_F(TextLines, TheLastLineHasAllTheRestForTheCanvasToCut) {
  const auto lines = LinesOf(u"one two three four five", WidthOf(u"three "), 2);
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_EQ(lines[0].text, u"one");
  EXPECT_EQ(lines[1].text, u"two three four five");
  EXPECT_LE(Width(lines[1].place), WidthOf(u"three ") + 1);
}

TEST_F(TextLines, MarksStandInTheLinesOfTheirUnits) {
  const TextRange ranges[] = {{2, 7}};  // "rst sec"
  const auto lines = LinesOf(u"first second", WidthOf(u"first secon"), 3, {.ranges = ranges});
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_EQ(lines[0].marked, (std::vector<TextRange>{{2, 3}}));
  EXPECT_EQ(lines[1].marked, (std::vector<TextRange>{{0, 3}}));
}

TEST_F(TextLines, AnEmptyTextDrawsNothing) { EXPECT_TRUE(LinesOf(u"", 100, 2).empty()); }

}  // namespace
}  // namespace quilmark
