#include "shell/view/combo_field.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "canvas/table_measure.h"
#include "shell/view/laws.h"
#include "shell/view/silent_window.h"

namespace quilmark {
namespace {

constexpr std::u16string_view kText = u"more than 100 MB and up to 1 GB";

class ComboAt : public testing::TestWithParam<uint32_t> {
 protected:
  void ExpectTheLaws(const RecordingCanvas& canvas) const {
    EXPECT_THAT(TextsOutsideTheirBoxes(canvas, fonts), testing::IsEmpty());
    EXPECT_THAT(UnreadableTexts(canvas, fonts, {}), testing::IsEmpty());
  }
  ViewContext Context(const Rect& place) const {
    return {.dpi = GetParam(), .client = place, .palette = palette, .fonts = fonts, .window = window};
  }

  mutable SilentWindow window;
  TableMeasure fonts{GetParam(), 125};
  Palette palette;
};

TEST_P(ComboAt, ItsFieldObeysTheLawsAtEveryWidthAndLeavesTheArrowFree) {
  for (const bool isDark : {false, true}) {
    palette = ThemeDefaults(isDark);
    for (int width = 1; width < ScaleFor(GetParam(), 200); width += 1 + width / 6) {
      const Rect field = {0, 0, width, ScaleFor(GetParam(), 36)};
      RecordingCanvas canvas(field);
      PaintComboField(canvas, Context(field), field, kText, false);
      ExpectTheLaws(canvas);
      int arrowLeft = width;
      for (const Drawn& drawn : canvas.drawn) {
        if (drawn.kind == Drawn::kFill && drawn.color == palette.text) arrowLeft = drawn.place.left;
        if (drawn.kind == Drawn::kText) EXPECT_LE(drawn.place.right, arrowLeft);
      }
    }
  }
}

TEST_P(ComboAt, ItsRowsObeyTheLaws) {
  for (const bool isDark : {false, true}) {
    palette = ThemeDefaults(isDark);
    const Rect row = {0, 0, ScaleFor(GetParam(), 160), ScaleFor(GetParam(), 28)};
    for (const ComboRow kind : {ComboRow::kPlain, ComboRow::kSelected, ComboRow::kField}) {
      RecordingCanvas canvas(row);
      PaintComboRow(canvas, Context(row), row, kText, kind);
      ExpectTheLaws(canvas);
      ASSERT_EQ(canvas.drawn.size(), 2u);
      EXPECT_EQ(canvas.drawn[0].color, kind == ComboRow::kSelected ? palette.rowSel : palette.editWell);
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Scales, ComboAt, testing::Values(96u, 120u, 144u, 192u, 288u));

TEST(ComboField, TellsWhetherItHasTheFocus) {
  SilentWindow window;
  const TableMeasure fonts(96);
  const Palette palette = ThemeDefaults(true);
  const Rect field = {0, 0, 120, 36};
  for (const bool hasFocus : {false, true}) {
    RecordingCanvas canvas(field);
    PaintComboField(canvas, {.client = field, .palette = palette, .fonts = fonts, .window = window},
                    field, u"", hasFocus);
    ASSERT_GE(canvas.drawn.size(), 3u);
    EXPECT_EQ(canvas.drawn[2].kind, Drawn::kOutline);
    EXPECT_EQ(canvas.drawn[2].color, hasFocus ? palette.focusRing : palette.border);
  }
}

}  // namespace
}  // namespace quilmark
