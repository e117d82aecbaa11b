#include "content/archive/entry_match.h"

#include <gtest/gtest.h>

#include <string>

#include "platform/generation.h"

namespace quilmark {
namespace {

const WorkCheck kGoesOn(Ticket::Unlimited());

bool Matches(std::string_view bytes, const WideGroups& groups) {
  ArchiveScratch scratch;
  return MatchEntry(bytes, MakeArchiveTerms(MakeContentGroups(groups), groups), kGoesOn, scratch);
}

std::u16string Units(std::string_view bytes) {
  std::u16string units(bytes.size(), u'\0');
  units.resize(EntryToUnits(bytes, units.data()));
  return units;
}

std::string Pairs(std::u16string_view text, bool isBig) {
  std::string bytes = isBig ? "\xFE\xFF" : "\xFF\xFE";
  for (const char16_t unit : text) {
    const char low = static_cast<char>(unit & 0xFF), high = static_cast<char>(unit >> 8);
    bytes += isBig ? high : low;
    bytes += isBig ? low : high;
  }
  return bytes;
}

TEST(EntryMatch, ReadsItsEncodings) {
  const std::u16string text = u"<t>\u4E2D\u00E9</t>";
  EXPECT_EQ(Units(Pairs(text, false)), text);
  EXPECT_EQ(Units(Pairs(text, true)), text);
  EXPECT_EQ(Units(Pairs(text, false) + "x"), text);
  EXPECT_EQ(Units("\xEF\xBB\xBF<t>\xE4\xB8\xAD\xC3\xA9</t>"), text);
  EXPECT_EQ(Units("\xEF\xBB\xBF"), u"");
  EXPECT_EQ(Units("\xFF"), Units("\xFF"));
  EXPECT_EQ(Units(""), u"");
}

TEST(EntryMatch, FindsTextInBothOrdersOfUtf16) {
  for (const bool isBig : {false, true}) {
    EXPECT_TRUE(Matches(Pairs(u"<t>Hel</t><t>lo</t>", isBig), {{u"Hello"}}));
    EXPECT_FALSE(Matches(Pairs(u"<t>Hel</t>x<p>lo</p>", isBig), {{u"Hello"}}));
  }
}

TEST(EntryMatch, FindsTextInEachForm) {
  EXPECT_TRUE(Matches("<t>Hel</t><t>lo</t>", {{u"Hello"}}));
  EXPECT_TRUE(Matches("<t>Hel</t></r><br/><r><t>lo</t>", {{u"Hello"}}));
  // Text outside of runs, and a section: by the loosest of the three.
  EXPECT_TRUE(Matches("<text:p>Hel<text:span>lo</text:span></text:p>", {{u"Hello"}}));
  EXPECT_TRUE(Matches("<t><![CDATA[Hello]]></t>", {{u"Hello"}}));
  EXPECT_TRUE(Matches("<t>&#x4E2D;</t>", {{u"\u4E2D"}}));
  EXPECT_TRUE(Matches("<text:p>&#x4E2D;</text:p>", {{u"\u4E2D"}}));
  EXPECT_FALSE(Matches("<w:Hello/>", {{u"Hello"}}));
}

TEST(EntryMatch, KeepsAGroupWithinOneText) {
  // "in" stands in a run, "out" outside: the loosest text has both.
  EXPECT_TRUE(Matches("<t>in</t>out", {{u"in", u"out"}}));
  // Joined runs have "ab", the text of the whole has "axb": no text has both.
  EXPECT_FALSE(Matches("<t>a</t>x<t>b</t>", {{u"ab", u"x"}}));
}

TEST(EntryMatch, FindsWideFormsInText) {
  // A term's UTF-16 bytes count wherever bytes are searched.
  EXPECT_TRUE(Matches(std::string("<q>h\0i\0</q>", 11), {{u"hi"}}));
}

TEST(EntryMatch, FallsBackToTheAnsiCodePage) {
  const std::string bytes = "<t>caf\xE9</t>";
  const std::u16string units = Units(bytes);
  ASSERT_EQ(units.substr(0, 6), u"<t>caf");
  EXPECT_TRUE(Matches(bytes, {{units.substr(3, units.find(u"</t>") - 3)}}));
}

TEST(EntryMatch, FindsNothingWhenTheWorkIsStale) {
  ArchiveScratch scratch;
  const WideGroups groups{{u"a"}};
  EXPECT_FALSE(MatchEntry("<t>a</t>", MakeArchiveTerms(MakeContentGroups(groups), groups),
                          WorkCheck(Ticket()), scratch));
}

}  // namespace
}  // namespace quilmark
