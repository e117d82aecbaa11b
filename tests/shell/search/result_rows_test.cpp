#include "shell/search/result_rows.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "shell/search/search_picture.h"

namespace quilmark {
namespace {

class ResultRowsOf : public testing::Test {
 protected:
  // What is drawn of rows that were read, each in a place of its own.
  std::vector<Drawn> Painted(uint64_t first, uint64_t end) {
    RecordingCanvas canvas({0, 0, 2'000, 1'000});
    for (uint64_t row = first; row < end; ++row) {
      const int top = 50 * static_cast<int>(row - first);
      rows.PaintRow(canvas, row, {.row = {0, top, 2'000, top + 44}}, picture.Context());
    }
    EXPECT_TRUE(canvas.IsBalanced());
    return canvas.drawn;
  }
  static bool Shows(const std::vector<Drawn>& drawn, std::u16string_view text) {
    return std::any_of(drawn.begin(), drawn.end(),
                       [text](const Drawn& one) { return one.text == text; });
  }

  SearchPicture picture;
  ResultRows rows{picture.app.search};
};

TEST_F(ResultRowsOf, AreThoseOfTheShownSet) {
  EXPECT_EQ(rows.Count(), 40u);
  picture.Hold(3);
  EXPECT_EQ(rows.Count(), 3u);
}

TEST_F(ResultRowsOf, ShowNumberAndNameOfWhatWasRead) {
  EXPECT_FALSE(rows.Read(0, 2).isLater);
  const auto drawn = Painted(0, 2);
  EXPECT_TRUE(Shows(drawn, u"01"));
  EXPECT_TRUE(Shows(drawn, u"ana-banana.txt"));
  EXPECT_TRUE(Shows(drawn, u"02"));
  EXPECT_FALSE(Shows(drawn, u"03"));
}

TEST_F(ResultRowsOf, MarkWhatTheQueryFound) {
  rows.Read(0, 1);
  const auto drawn = Painted(0, 1);
  const auto name = std::find_if(drawn.begin(), drawn.end(),
                                 [](const Drawn& one) { return one.text == u"ana-banana.txt"; });
  ASSERT_NE(name, drawn.end());
  EXPECT_EQ(name->marked, (std::vector<TextRange>{{1, 2}, {6, 2}, {8, 2}})) << "each na";
}

TEST_F(ResultRowsOf, SayThatAttributesAreMissing) { EXPECT_TRUE(rows.Read(0, 1).isMissing); }

TEST_F(ResultRowsOf, DrawNoNameOfARowThatIsGoneByNow) {
  picture.Hold(2);
  rows.Read(0, 5);
  EXPECT_TRUE(Shows(Painted(0, 1), u"ana-banana.txt"));
  for (const Drawn& one : Painted(2, 5)) EXPECT_EQ(one.text, u"");
}

}  // namespace
}  // namespace quilmark
