#include "shell/view/tag.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "canvas/table_measure.h"
#include "shell/search/layout.h"
#include "shell/view/laws.h"
#include "shell/view/silent_window.h"

namespace quilmark {
namespace {

constexpr int kHeight = 40;

struct TagCase {
  uint32_t dpi;
  int percent;  // of the widths of letters
  bool isDark;
};
class TagAt : public testing::TestWithParam<TagCase> {
 protected:
  RecordingCanvas Painted(int width, const TagText& shown, const TagLook& look) const {
    const Rect place = {0, 0, width, ScaleFor(GetParam().dpi, kHeight)};
    const ViewContext context = {
        .dpi = GetParam().dpi, .client = place, .palette = palette, .fonts = fonts, .window = window};
    RecordingCanvas canvas(place);
    PaintTag(canvas, context, place, shown, look);
    return canvas;
  }
  int WantedWidth() const {
    return FilterTagWidth(GetParam().dpi, fonts.WidthOf(FontRole::kFilter, text.name),
                          fonts.WidthOf(FontRole::kFilter, text.count));
  }

  mutable SilentWindow window;
  TableMeasure fonts{GetParam().dpi, GetParam().percent};
  Palette palette = ThemeDefaults(GetParam().isDark);
  TagText text = {u"Applications", u"(12,345)"};
};

TEST_P(TagAt, ObeysTheLawsInEveryStateAndWidth) {
  for (int width = 1; width < ScaleFor(GetParam().dpi, 260); width += 1 + width / 6) {
    for (const TagLook look : {TagLook{}, TagLook{.isChosen = true}, TagLook{.isHot = true},
                               TagLook{.isChosen = true, .isHot = true, .hasFocus = true}}) {
      const RecordingCanvas canvas = Painted(width, text, look);
      EXPECT_THAT(TextsOutsideTheirBoxes(canvas, fonts), testing::IsEmpty());
      EXPECT_THAT(TextsOverOthers(canvas, fonts), testing::IsEmpty());
      EXPECT_THAT(UnreadableTexts(canvas, fonts, {}), testing::IsEmpty());
    }
  }
}

TEST_P(TagAt, ShowsBothTextsWholeAtTheWidthThatItAsksFor) {
  const RecordingCanvas canvas = Painted(WantedWidth(), text, {});
  size_t texts = 0;
  for (const Drawn& drawn : canvas.drawn) {
    if (drawn.kind != Drawn::kText) continue;
    ++texts;
    EXPECT_GE(Width(drawn.shown), fonts.WidthOf(FontRole::kFilter, drawn.text));
  }
  EXPECT_EQ(texts, 2u);
}

TEST_P(TagAt, CutsTheNameAndNeverTheCount) {
  const RecordingCanvas canvas = Painted(WantedWidth() * 3 / 4, text, {});
  const Drawn& count = canvas.drawn.back();
  EXPECT_EQ(count.text, text.count);
  EXPECT_GE(Width(count.shown), fonts.WidthOf(FontRole::kFilter, count.text));
}

INSTANTIATE_TEST_SUITE_P(Cases, TagAt,
                         testing::Values(TagCase{96, 100, false}, TagCase{96, 125, true},
                                         TagCase{144, 85, true}, TagCase{192, 125, false},
                                         TagCase{288, 100, true}));

TEST(Tag, ShowsTheFocusByALineAroundIt) {
  SilentWindow window;
  const TableMeasure fonts(96);
  const Palette palette = ThemeDefaults(false);
  const Rect place = {10, 10, 130, 50};
  const ViewContext context = {.client = place, .palette = palette, .fonts = fonts, .window = window};
  RecordingCanvas plain(place), focused(place);
  PaintTag(plain, context, place, {u"All", u"(1)"}, {});
  PaintTag(focused, context, place, {u"All", u"(1)"}, {.hasFocus = true});
  ASSERT_EQ(focused.drawn.size(), plain.drawn.size() + 1);
  EXPECT_EQ(focused.drawn.back().kind, Drawn::kOutline);
  EXPECT_EQ(focused.drawn.back().place, place);
  EXPECT_EQ(focused.drawn.back().color, palette.focusRing);
}

TEST(SplitCaption, GivesTheTwoLines) {
  const TagText text = SplitCaption(u"Letters (old)\r\n(12)");
  EXPECT_EQ(text.name, u"Letters (old)");
  EXPECT_EQ(text.count, u"(12)");
}

TEST(SplitCaption, OfOneLineHasNoCount) {
  for (const std::u16string caption : {u"", u"Letters", u"Letters\n(12)"}) {
    const TagText text = SplitCaption(caption);
    EXPECT_EQ(text.name, caption);
    EXPECT_EQ(text.count, u"");
  }
}

}  // namespace
}  // namespace quilmark
