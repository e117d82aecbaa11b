#include "shell/win32/gdi/gdi_fonts.h"

#include <gtest/gtest.h>

#include "canvas/table_measure.h"

namespace quilmark {
namespace {

constexpr std::u16string_view kTexts[] = {
    u"",
    u"Type a part of a name; Enter lists everything",
    u"C:\\Program Files (x86)\\Common Files\\annals-39.txt",
    u"2026-11-22 10:45",
    u"1,234,567,890 files @ 3.40 MB [100%] {~} #_&*",
    u"Größe, Änderungsdatum, œuvre, señor",
    u"Имя файла и папки",
    u"资料-中文名.docx",
    u"日本語のファイル、カタカナ.pdf",
    u"한국어 문서.txt",
    u"「全角」，。！ＡＢＣ",
};

// The bold face has not all of their letters, and Wine looks for none elsewhere.
constexpr std::u16string_view kRegularTexts[] = {u"Łódź, İstanbul", u"Όνομα αρχείου"};

class GdiFontsAtScale : public testing::TestWithParam<uint32_t> {
 protected:
  static void ExpectEqual(const TextMeasure& fonts, const TextMeasure& table, FontRole font,
                          std::u16string_view text) {
    EXPECT_EQ(fonts.WidthOf(font, text), table.WidthOf(font, text)) << text.size();
    for (const int width : {0, 50, 137}) {
      EXPECT_EQ(fonts.UnitsWithin(font, text, width), table.UnitsWithin(font, text, width));
    }
  }
};

// What is laid out natively is laid out alike in the window.
TEST_P(GdiFontsAtScale, MeasureAsTheTableDoes) {
  GdiFonts fonts;
  EXPECT_EQ(fonts.Take(MakeFonts(GetParam(), false))[0].Get(), nullptr);
  const TableMeasure table(GetParam());
  for (size_t role = 0; role < kFontRoles; ++role) {
    const auto font = static_cast<FontRole>(role);
    SCOPED_TRACE(role);
    EXPECT_EQ(fonts.LineHeight(font), table.LineHeight(font));
    for (const std::u16string_view text : kTexts) ExpectEqual(fonts, table, font, text);
    if (RowOf(font).weight > 550) continue;
    for (const std::u16string_view text : kRegularTexts) ExpectEqual(fonts, table, font, text);
  }
}

INSTANTIATE_TEST_SUITE_P(Scales, GdiFontsAtScale, testing::Values(96u, 120u, 144u, 192u, 288u));

TEST(GdiFonts, GiveTheFormerFontsBackAndCountTheirVersions) {
  GdiFonts fonts;
  const FontSet none = fonts.Take(MakeFonts(96, false));
  const HFONT first = fonts.Of(FontRole::kList);
  const uint32_t version = fonts.Version();
  EXPECT_GT(fonts.WidthOf(FontRole::kList, u"selected"), 0);
  const FontSet former = fonts.Take(MakeFonts(192, false));
  EXPECT_EQ(former[static_cast<size_t>(FontRole::kList)].Get(), first);
  EXPECT_NE(fonts.Of(FontRole::kList), first);
  EXPECT_NE(fonts.Version(), version);
}

// Its letters join, and are narrower than they are one by one.
TEST(GdiFonts, MeasureWhatRunsFromRightToLeftAsItIsDrawn) {
  GdiFonts fonts;
  const FontSet none = fonts.Take(MakeFonts(192, false));
  const std::u16string_view text = u"\u0645\u0644\u0641 \u0639\u0631\u0628\u064A";
  int apart = 0;
  for (const char16_t& unit : text) apart += fonts.WidthOf(FontRole::kFilter, {&unit, 1});
  EXPECT_GT(fonts.WidthOf(FontRole::kFilter, text), 0);
  EXPECT_LT(fonts.WidthOf(FontRole::kFilter, text), apart);
}

}  // namespace
}  // namespace quilmark
