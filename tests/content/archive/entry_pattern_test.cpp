#include "content/archive/entry_pattern.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace quilmark {
namespace {

// The pattern as a recursion, which takes exponential time where it must.
bool Recursion(std::string_view name, std::string_view pattern) {
  if (pattern.empty()) return name.empty();
  if (pattern[0] != '*')
    return !name.empty() && name[0] == pattern[0] && Recursion(name.substr(1), pattern.substr(1));
  if (pattern.size() == 1) return !name.empty();
  for (size_t i = 0; i < name.size(); ++i) {
    if (Recursion(name.substr(i), pattern.substr(1))) return true;
  }
  return false;
}

TEST(EntryPattern, MatchesWholeNames) {
  EXPECT_TRUE(MatchEntryPattern("word/document.xml", "word/document.xml"));
  EXPECT_FALSE(MatchEntryPattern("word/document.xml2", "word/document.xml"));
  EXPECT_FALSE(MatchEntryPattern("Word/document.xml", "word/document.xml"));
  EXPECT_TRUE(MatchEntryPattern("word/header12.xml", "word/header*.xml"));
  EXPECT_TRUE(MatchEntryPattern("word/header.xml", "word/header*.xml"));
  EXPECT_TRUE(MatchEntryPattern("content.xml", "*.xml"));
  EXPECT_TRUE(MatchEntryPattern(".xml", "*.xml"));
  EXPECT_FALSE(MatchEntryPattern("content.xml.rels", "*.xml"));
  EXPECT_FALSE(MatchEntryPattern("wordxdocument", "word?document"));
}

TEST(EntryPattern, AnEmptyOneMatchesAnEmptyNameAlone) {
  EXPECT_TRUE(MatchEntryPattern("", ""));
  EXPECT_FALSE(MatchEntryPattern("a", ""));
}

TEST(EntryPattern, AStarAtTheEndStandsForSomething) {
  EXPECT_FALSE(MatchEntryPattern("word/", "word/*"));
  EXPECT_TRUE(MatchEntryPattern("word/a", "word/*"));
  EXPECT_FALSE(MatchEntryPattern("", "*"));
  EXPECT_TRUE(MatchEntryPattern("a", "**"));
  EXPECT_FALSE(MatchEntryPattern("ba", "*a*"));
}

TEST(EntryPattern, IsThatOfTheRecursion) {
  std::mt19937 random(11);
  const auto text = [&random](unsigned most, const char* alphabet, unsigned letters) {
    std::string made(random() % (most + 1), ' ');
    for (char& c : made) c = alphabet[random() % letters];
    return made;
  };
  int matches = 0;
  for (int i = 0; i < 300'000; ++i) {
    const std::string name = text(8, "ab*", i % 3 == 0 ? 3 : 2), pattern = text(7, "*ab", 3);
    const bool isMatch = MatchEntryPattern(name, pattern);
    ASSERT_EQ(isMatch, Recursion(name, pattern)) << name << ' ' << pattern;
    matches += isMatch ? 1 : 0;
  }
  EXPECT_GT(matches, 1000);
}

TEST(EntryPattern, TakesNoExponentialTime) {
  const std::string name(511, 'a');
  std::string pattern;
  for (int i = 0; i < 500; ++i) pattern += "*a";
  EXPECT_TRUE(MatchEntryPattern(name, pattern));
  EXPECT_FALSE(MatchEntryPattern(name, pattern + "b"));
  EXPECT_FALSE(MatchEntryPattern(name, pattern + "*b*"));
}

}  // namespace
}  // namespace quilmark
