#include "content/run/first_line.h"

#include <gtest/gtest.h>

#include "support/scratch_folder.h"

namespace quilmark {
namespace {

using std::literals::operator""s;

std::string Shown(const QueryGroups& query, std::string_view bytes) {
  const auto line = FirstLineIn(bytes, MakeContentGroups(query));
  return line ? std::to_string(line->number) + ":" + line->text : "none";
}

TEST(FirstLine, IsTheOneOfTheFirstTerm) {
  EXPECT_EQ(Shown({{u"word"}}, "a word"), "1:a word");
  EXPECT_EQ(Shown({{u"word"}}, "one\r\ntwo\r\na word here\r\nfour"), "3:a word here");
  EXPECT_EQ(Shown({{u"four", u"two"}}, "one\ntwo\nthree\nfour\n"), "2:two");
  EXPECT_EQ(Shown({{u"four"}, {u"two"}}, "one\ntwo\nthree\nfour\n"), "2:two");
  EXPECT_EQ(Shown({{u"word"}}, "\n\nword\n"), "3:word");
}

TEST(FirstLine, IsNoneOfAGroupThatIsNotWhole) {
  EXPECT_EQ(Shown({{u"word"}}, "nothing"), "none");
  EXPECT_EQ(Shown({{u"one", u"missing"}, {u"two"}}, "one\ntwo\n"), "2:two");
  EXPECT_EQ(Shown({}, "one"), "none");
}

TEST(FirstLine, IsReadInTheEncodingOfTheTerm) {
  EXPECT_EQ(Shown({{u"Gr\u00F6\u00DFe"}},
                  "eins\nGr\xC3\xB6\xC3\x9F"
                  "e\n"),
            "2:Gr\xC3\xB6\xC3\x9F"
            "e");
  EXPECT_EQ(Shown({{u"Gr\u00F6\u00DFe"}},
                  "eins\nGr\xF6\xDF"
                  "e\n"),
            "2:Gr\xEF\xBF\xBD\xEF\xBF\xBD"
            "e");
  EXPECT_EQ(Shown({{u"\u0416\u0443"}},
                  "\xFF\xFE"
                  "a\0\n\0\x16\x04\x43\x04\x0D\0\n\0"s),
            "2:\xD0\x96\xD1\x83");
  EXPECT_EQ(Shown({{u"word"}}, "xw\0o\0r\0d\0"s), "1:word") << "units at an odd place";
}

TEST(FirstLine, OfALongLineIsThePartAroundTheHit) {
  const auto line = FirstLineIn(std::string(5'000, 'a') + "word" + std::string(5'000, 'b'),
                                MakeContentGroups({{u"word"}}));
  ASSERT_TRUE(line.has_value());
  EXPECT_EQ(line->text, std::string(200, 'a') + "word" + std::string(296, 'b'));
}

TEST(FirstLine, OfAFileIsFoundWhereverItIs) {
  const ScratchFolder folder;
  folder.MakeFile("a.txt", std::string(10'000'000, '\n') + "a word\n");
  PlainFileReader reader;
  const auto line = FirstLineOf(folder.PathOf(u"a.txt"), MakeContentGroups({{u"word"}}), reader);
  ASSERT_TRUE(line.has_value());
  EXPECT_EQ(line->number, 10'000'001u);
  EXPECT_EQ(line->text, "a word");
  EXPECT_FALSE(FirstLineOf(folder.PathOf(u"none"), MakeContentGroups({{u"word"}}), reader).has_value());
}

}  // namespace
}  // namespace quilmark
