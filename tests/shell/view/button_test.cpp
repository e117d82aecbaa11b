#include "shell/view/button.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "canvas/table_measure.h"
#include "shell/view/laws.h"
#include "shell/view/silent_window.h"

namespace quilmark {
namespace {

RecordingCanvas Painted(const Palette& palette, const TableMeasure& fonts, const Rect& place,
                        std::u16string_view caption, const ButtonLook& look) {
  static SilentWindow window;
  const ViewContext context = {.client = place, .palette = palette, .fonts = fonts, .window = window};
  RecordingCanvas canvas(place);
  PaintButton(canvas, context, place, caption, look);
  return canvas;
}

TEST(Button, ObeysTheLawsInEveryStateAndWidth) {
  const TableMeasure fonts(96);
  for (const bool isDark : {false, true}) {
    const Palette palette = ThemeDefaults(isDark);
    for (int width = 1; width < 160; width += 7) {
      for (int state = 0; state < 32; ++state) {
        const ButtonLook look = {.isPrimary = (state & 1) != 0,
                                 .isHot = (state & 2) != 0,
                                 .isPressed = (state & 4) != 0,
                                 .isEnabled = (state & 8) != 0,
                                 .hasFocus = (state & 16) != 0};
        const RecordingCanvas canvas =
            Painted(palette, fonts, {0, 0, width, 32}, u"Choose another", look);
        EXPECT_THAT(TextsOutsideTheirBoxes(canvas, fonts), testing::IsEmpty());
        EXPECT_THAT(UnreadableTexts(canvas, fonts, {}), testing::IsEmpty()) << isDark << " " << state;
      }
    }
  }
}

TEST(Button, ShowsItsCaptionWholeInTheMiddle) {
  const TableMeasure fonts(96);
  const RecordingCanvas canvas = Painted(ThemeDefaults(false), fonts, {0, 0, 120, 32}, u"OK", {});
  for (const Drawn& drawn : canvas.drawn) {
    if (drawn.kind != Drawn::kText) continue;
    EXPECT_GE(Width(drawn.shown), fonts.WidthOf(FontRole::kFilter, u"OK"));
    EXPECT_NEAR(drawn.place.left, 120 - drawn.place.right, 1);
  }
}

TEST(Button, TellsItsStatesApart) {
  const TableMeasure fonts(96);
  const Palette palette = ThemeDefaults(false);
  const auto groundOf = [&](const ButtonLook& look) {
    return Painted(palette, fonts, {0, 0, 120, 32}, u"OK", look).drawn.front().color;
  };
  EXPECT_NE(groundOf({}), groundOf({.isHot = true}));
  EXPECT_NE(groundOf({.isHot = true}), groundOf({.isPressed = true}));
  EXPECT_NE(groundOf({}), groundOf({.isPrimary = true}));
  EXPECT_NE(groundOf({}), groundOf({.isEnabled = false}));
  const auto lineOf = [&](const ButtonLook& look) {
    return Painted(palette, fonts, {0, 0, 120, 32}, u"OK", look).drawn.back().color;
  };
  EXPECT_EQ(lineOf({.hasFocus = true}), palette.focusRing);
  EXPECT_EQ(lineOf({}), palette.border);
}

}  // namespace
}  // namespace quilmark
