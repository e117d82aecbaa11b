#include "shell/view/edit_text.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace quilmark {
namespace {

TEST(FirstLine, LeavesOutBreaksAndTabs) {
  EXPECT_EQ(FirstLine(u"C:\\a b.txt\r\n"), u"C:\\a b.txt");
  EXPECT_EQ(FirstLine(u"\r\n \tone\ttwo\nthree"), u"one two");
  EXPECT_EQ(FirstLine(u" \r\n\t"), u"");
  EXPECT_EQ(FirstLine(u""), u"");
}

TEST(OpenPatiently, TriesFiveTimes) {
  for (int opensAt = 1; opensAt <= 6; ++opensAt) {
    int tries = 0, pauses = 0;
    const bool isOpen = OpenPatiently([&] { return ++tries == opensAt; }, [&] { ++pauses; });
    EXPECT_EQ(isOpen, opensAt <= 5);
    EXPECT_EQ(tries, std::min(opensAt, 5));
    EXPECT_EQ(pauses, tries - 1);
  }
}

TEST(WordStart, IsThatOfTheWordBeforeTheCaret) {
  EXPECT_EQ(WordStart(u"one two", 7), 4u);
  EXPECT_EQ(WordStart(u"one two  ", 9), 4u);
  EXPECT_EQ(WordStart(u"one two", 4), 0u);
  EXPECT_EQ(WordStart(u"one", 3), 0u);
  EXPECT_EQ(WordStart(u"   ", 3), 0u);
  EXPECT_EQ(WordStart(u"", 0), 0u);
  EXPECT_EQ(WordStart(u"a", 1), 0u);
  EXPECT_EQ(WordStart(u"dir\\file", 8), 4u);
  EXPECT_EQ(WordStart(u"dir\\", 4), 0u);
}

TEST(WordStart, NeverLiesBehindTheCaret) {
  const std::u16string text = u" a\\b  c d\\\\ ";
  for (size_t caret = 0; caret <= text.size(); ++caret) {
    EXPECT_LE(WordStart(text, caret), caret);
    if (caret > 0) {
      EXPECT_LT(WordStart(text, caret), caret);
    }
  }
}

}  // namespace
}  // namespace quilmark
