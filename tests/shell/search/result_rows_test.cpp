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
    painted = {};
    for (uint64_t row = first; row < end; ++row) {
      const int top = 50 * static_cast<int>(row - first);
      painted.Join(rows.PaintRow(canvas, row, {.row = {0, top, 2'000, top + 44}}, picture.Context()));
    }
    EXPECT_TRUE(canvas.IsBalanced());
    return canvas.drawn;
  }
  static bool Shows(const std::vector<Drawn>& drawn, std::u16string_view text) {
    return std::any_of(drawn.begin(), drawn.end(),
                       [text](const Drawn& one) { return one.text == text; });
  }

  static std::vector<Rect> Icons(const std::vector<Drawn>& drawn) {
    std::vector<Rect> places;
    for (const Drawn& one : drawn) {
      if (one.kind == Drawn::kIcon) places.push_back(one.place);
    }
    return places;
  }

  SearchPicture picture;
  PaintOutcome painted;
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

TEST_F(ResultRowsOf, HaveAnIconLeftOfTheirName) {
  rows.Read(0, 1);
  const auto drawn = Painted(0, 1);
  const int left = CurrentWindowSettings.columnWidth[0] + 10;
  ASSERT_EQ(Icons(drawn), (std::vector<Rect>{{left, 14, left + 16, 30}}));
  const auto name = std::find_if(drawn.begin(), drawn.end(),
                                 [](const Drawn& one) { return one.text == u"ana-banana.txt"; });
  ASSERT_NE(name, drawn.end());
  EXPECT_EQ(name->place.left, CurrentWindowSettings.columnWidth[0] + 15 + 22);
}

TEST_F(ResultRowsOf, HaveTheirIconInTheMiddleOfACell) {
  for (const auto& [view, size] : {std::pair{ViewMode::kSmallIcons, 24}, {ViewMode::kLargeIcons, 48}}) {
    picture.SetView(view);
    rows.Read(0, 1);
    EXPECT_EQ(Icons(Painted(0, 1)),
              (std::vector<Rect>{{1'000 - size / 2, 8, 1'000 + size / 2, 8 + size}}));
  }
}

TEST_F(ResultRowsOf, AskForEachFilesIconOnce) {
  rows.Read(0, 40);
  Painted(0, 20);
  Painted(0, 20);
  EXPECT_EQ(picture.source.Count("file "), 5u) << "five files, over and over";
  EXPECT_EQ(picture.source.Count("folder Q:"), 0u);
}

TEST_F(ResultRowsOf, LoadNoIconWhileTheListMoves) {
  picture.app.search.lastScrollTick = picture.nowMs - 349;
  rows.Read(0, 6);
  EXPECT_EQ(Icons(Painted(0, 6)).size(), 1u) << "the folder's";
  EXPECT_EQ(picture.source.Count("file "), 0u);
  picture.nowMs += 1;
  EXPECT_EQ(Icons(Painted(0, 6)).size(), 6u);
  picture.app.search.thumbDragging = true;
  EXPECT_EQ(Icons(Painted(0, 6)).size(), 6u) << "what is kept is drawn";
}

TEST_F(ResultRowsOf, WithoutAnIconAreDrawnAllTheSame) {
  picture.source.hasTypes = false;
  rows.Read(0, 1);
  const auto drawn = Painted(0, 1);
  EXPECT_EQ(Icons(drawn).size(), 0u);
  EXPECT_TRUE(Shows(drawn, u"ana-banana.txt"));
  picture.app.search.icons = nullptr;
  EXPECT_TRUE(Shows(Painted(0, 1), u"ana-banana.txt"));
}

TEST_F(ResultRowsOf, SayThatAThumbnailIsMissing) {
  picture.AddPicture(u"holiday.jpg");
  picture.SetView(ViewMode::kLargeIcons);
  rows.Read(0, 1);
  Painted(0, 1);
  EXPECT_TRUE(painted.isPictureMissing);
  picture.SetView(ViewMode::kList);
  Painted(0, 1);
  EXPECT_FALSE(painted.isPictureMissing);
}

TEST_F(ResultRowsOf, DrawNoNameOfARowThatIsGoneByNow) {
  picture.Hold(2);
  rows.Read(0, 5);
  EXPECT_TRUE(Shows(Painted(0, 1), u"ana-banana.txt"));
  for (const Drawn& one : Painted(2, 5)) EXPECT_EQ(one.text, u"");
}

}  // namespace
}  // namespace quilmark
