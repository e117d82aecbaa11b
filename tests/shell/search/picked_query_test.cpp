#include "shell/search/picked_query.h"

#include <gtest/gtest.h>

namespace quilmark {
namespace {

TEST(AsksForPicker, WhereTheTextBecameThePrefix) {
  EXPECT_TRUE(AsksForPicker(u"s", u"s:"));
  EXPECT_TRUE(AsksForPicker(u"", u"S:"));
  EXPECT_TRUE(AsksForPicker(u"s:a", u" s: ")) << "by deleting, too";
  EXPECT_FALSE(AsksForPicker(u"s:", u"s: ")) << "it was that before";
  EXPECT_FALSE(AsksForPicker(u"s:", u"s:a"));
  EXPECT_FALSE(AsksForPicker(u"", u"as:"));
}

TEST(AsksForPicker, WhereTheBarIsNew) {
  EXPECT_TRUE(AsksForPicker(u"s:word", u"s:word|"));
  EXPECT_TRUE(AsksForPicker(u"s:word|t", u"S:word|"));
  EXPECT_TRUE(AsksForPicker(u"s:word", u"s:word| "));
  EXPECT_FALSE(AsksForPicker(u"s:word|", u"s:words|"));
  EXPECT_FALSE(AsksForPicker(u"s:word", u"s:word|t"));
  EXPECT_FALSE(AsksForPicker(u"word", u"word|"));
}

TEST(LacksWords, WhereNothingIsLookedFor) {
  for (const auto* text : {u"s:", u" S: ", u"s:|", u"s: |.txt"}) {
    EXPECT_TRUE(LacksWords(text)) << testing::PrintToString(text);
  }
  for (const auto* text : {u"s:a", u"S:a|", u"s:a|.txt", u"", u"s", u"word"}) {
    EXPECT_FALSE(LacksWords(text)) << testing::PrintToString(text);
  }
}

TEST(WithExtensions, KeepsTheWordsAndPutsTheCaretBehindThem) {
  const struct {
    std::u16string_view box, text;
    size_t caret;
  } cases[] = {
      {u"s:", u"s:|.txt,.md", 2},
      {u" S: two words | .pdf ", u"s:two words|.txt,.md", 11},
      {u"s:word|a|b", u"s:word|.txt,.md", 6},
      {u"a name", u"s:|.txt,.md", 2},
      {u"", u"s:|.txt,.md", 2},
  };
  for (const auto& [box, text, caret] : cases) {
    const PickedQuery query = WithExtensions(box, {u".txt", u".md"}, 255);
    EXPECT_EQ(query.text, text);
    EXPECT_EQ(query.caret, caret);
  }
}

TEST(WithExtensions, LeavesTheListOutWhereWordsWouldHaveNoRoom) {
  std::vector<std::u16string> many(60, u".extension");
  EXPECT_EQ(WithExtensions(u"s:word|a", many, 255).text, u"s:word");
  many.resize(10);
  EXPECT_EQ(WithExtensions(u"s:word|a", many, 255).text.size(), 6u + 1 + 10 * 11 - 1);
}

}  // namespace
}  // namespace quilmark
