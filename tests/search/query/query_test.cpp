#include "search/query/query.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <random>
#include <string>

#include "platform/utf.h"

namespace quilmark {
namespace {

const std::vector<std::u16string> kDefaultExts = {u".txt", u".log"};

QueryGroups Prepared(std::u16string_view text) { return PrepareNameGroups(ParseQueryGroups(text)); }

std::u16string TrimmedQuery(std::u16string text) {
  TrimQuery(text);
  return text;
}

TEST(TrimQuery, RemovesBlanksTabsAndLineEndsAtBothEnds) {
  EXPECT_EQ(TrimmedQuery(u" \t\r\na b\n\r\t "), u"a b");
  EXPECT_EQ(TrimmedQuery(u"ab"), u"ab");
}

TEST(TrimQuery, ATextOfBlanksBecomesEmpty) {
  EXPECT_EQ(TrimmedQuery(u" \t\r\n"), u"");
  EXPECT_EQ(TrimmedQuery(u""), u"");
}

TEST(TrimQuery, KeepsOtherSpaces) { EXPECT_EQ(TrimmedQuery(u"\u00A0a\u3000\v"), u"\u00A0a\u3000\v"); }

TEST(ParseQueryGroups, AndBindsMoreThanOr) {
  EXPECT_EQ(ParseQueryGroups(u"a and b or c"), (QueryGroups{{u"a", u"b"}, {u"c"}}));
  EXPECT_EQ(ParseQueryGroups(u"a or b and c"), (QueryGroups{{u"a"}, {u"b", u"c"}}));
}

TEST(ParseQueryGroups, TheWordsMayHaveAnyCase) {
  EXPECT_EQ(ParseQueryGroups(u"A AND B"), (QueryGroups{{u"A", u"B"}}));
  EXPECT_EQ(ParseQueryGroups(u"a aNd b Or c"), ParseQueryGroups(u"a and b or c"));
}

TEST(ParseQueryGroups, TermsKeepTheirCase) {
  EXPECT_EQ(ParseQueryGroups(u"FooBar"), (QueryGroups{{u"FooBar"}}));
}

TEST(ParseQueryGroups, TabsAndBlanksMixAroundTheWords) {
  for (const char16_t* text : {u"a and b", u"a\tand\tb", u"a and\tb", u"a\tand b"}) {
    EXPECT_EQ(ParseQueryGroups(text), (QueryGroups{{u"a", u"b"}}));
  }
  for (const char16_t* text : {u"a or b", u"a\tor\tb", u"a or\tb", u"a\tor b"}) {
    EXPECT_EQ(ParseQueryGroups(text), (QueryGroups{{u"a"}, {u"b"}}));
  }
}

TEST(ParseQueryGroups, OtherSpacesAreNoBlanksAroundTheWords) {
  EXPECT_EQ(ParseQueryGroups(u"a\nand b"), (QueryGroups{{u"a\nand b"}}));
  EXPECT_EQ(ParseQueryGroups(u"a\u00A0or b"), (QueryGroups{{u"a\u00A0or b"}}));
}

TEST(ParseQueryGroups, ABlankDoesNotSeparateTerms) {
  EXPECT_EQ(ParseQueryGroups(u"foo bar"), (QueryGroups{{u"foo bar"}}));
}

TEST(ParseQueryGroups, SurplusBlanksAroundAWordAreTrimmedAway) {
  EXPECT_EQ(ParseQueryGroups(u"a  or  b"), (QueryGroups{{u"a"}, {u"b"}}));
  EXPECT_EQ(ParseQueryGroups(u"a \t and \t b"), (QueryGroups{{u"a", u"b"}}));
}

TEST(ParseQueryGroups, AWordAtTheBeginningIsPartOfTheTerm) {
  EXPECT_EQ(ParseQueryGroups(u"and b"), (QueryGroups{{u"and b"}}));
  EXPECT_EQ(ParseQueryGroups(u"or b"), (QueryGroups{{u"or b"}}));
}

TEST(ParseQueryGroups, AWordAtTheEndIsPartOfTheTerm) {
  EXPECT_EQ(ParseQueryGroups(u"a and"), (QueryGroups{{u"a and"}}));
  EXPECT_EQ(ParseQueryGroups(u"a or"), (QueryGroups{{u"a or"}}));
}

TEST(ParseQueryGroups, AWordInsideAnotherIsNoOperator) {
  EXPECT_EQ(ParseQueryGroups(u"sand box or android orbit"),
            (QueryGroups{{u"sand box"}, {u"android orbit"}}));
}

// The first word takes the blank that the second one would need in front.
TEST(ParseQueryGroups, OfTwoWordsInARowTheSecondIsATerm) {
  EXPECT_EQ(ParseQueryGroups(u"a and and b"), (QueryGroups{{u"a", u"and b"}}));
  EXPECT_EQ(ParseQueryGroups(u"a or and b"), (QueryGroups{{u"a"}, {u"and b"}}));
  EXPECT_EQ(ParseQueryGroups(u"a or  and b"), (QueryGroups{{u"a"}, {u"b"}}));
}

TEST(ParseQueryGroups, QuotesKeepAWordInTheTerm) {
  EXPECT_EQ(ParseQueryGroups(u"\"a and b\""), (QueryGroups{{u"a and b"}}));
  EXPECT_EQ(ParseQueryGroups(u"\"a or b\" and c"), (QueryGroups{{u"a or b", u"c"}}));
}

TEST(ParseQueryGroups, AQuoteWithoutItsPartnerRunsToTheEnd) {
  EXPECT_EQ(ParseQueryGroups(u"a and \"b or c"), (QueryGroups{{u"a", u"b or c"}}));
}

TEST(ParseQueryGroups, QuotesInsideATermVanish) {
  EXPECT_EQ(ParseQueryGroups(u"fo\"o b\"ar"), (QueryGroups{{u"foo bar"}}));
}

TEST(ParseQueryGroups, QuotesInsideAWordHideIt) {
  EXPECT_EQ(ParseQueryGroups(u"a \"and\" b"), (QueryGroups{{u"a and b"}}));
}

TEST(ParseQueryGroups, ABackslashHidesAWordBehindIt) {
  EXPECT_EQ(ParseQueryGroups(u"a\\ and b"), (QueryGroups{{u"a and b"}}));
  EXPECT_EQ(ParseQueryGroups(u"a and\\ b"), (QueryGroups{{u"a and b"}}));
}

TEST(ParseQueryGroups, ABackslashTakesTheNextCharacterAsItIs) {
  EXPECT_EQ(ParseQueryGroups(u"\\\"a\\\\b"), (QueryGroups{{u"\"a\\b"}}));
  EXPECT_EQ(ParseQueryGroups(u"\"a\\\"b and c\""), (QueryGroups{{u"a\"b and c"}}));
}

TEST(ParseQueryGroups, APathLosesItsSeparators) {
  EXPECT_EQ(ParseQueryGroups(u"c:\\temp\\x"), (QueryGroups{{u"c:tempx"}}));
  EXPECT_EQ(ParseQueryGroups(u"\"c:\\temp\\x\""), (QueryGroups{{u"c:tempx"}}));
}

TEST(ParseQueryGroups, ABackslashAtTheEndIsDropped) {
  EXPECT_EQ(ParseQueryGroups(u"a\\"), (QueryGroups{{u"a"}}));
  EXPECT_EQ(ParseQueryGroups(u"\\"), QueryGroups{});
}

TEST(ParseQueryGroups, EmptyTermsAndGroupsAreLeftOut) {
  EXPECT_EQ(ParseQueryGroups(u"\"\" and a or \" \" or b"), (QueryGroups{{u"a"}, {u"b"}}));
  EXPECT_EQ(ParseQueryGroups(u" or a"), (QueryGroups{{u"a"}}));
}

TEST(ParseQueryGroups, QuotedBlanksAtTheEndsOfATermAreTrimmedToo) {
  EXPECT_EQ(ParseQueryGroups(u"\" a \" and \\ b"), (QueryGroups{{u"a", u"b"}}));
}

TEST(ParseQueryGroups, NothingGivesNoGroups) {
  EXPECT_EQ(ParseQueryGroups(u""), QueryGroups{});
  EXPECT_EQ(ParseQueryGroups(u"\"\""), QueryGroups{});
}

TEST(PrepareNameGroups, FoldsEveryTerm) {
  EXPECT_EQ(Prepared(u"FOO and \u00C4\u0416 or Bar"),
            (QueryGroups{{u"foo", u"\u00E4\u0436"}, {u"bar"}}));
}

TEST(PrepareNameGroups, TrimsAndDropsWhatIsEmpty) {
  const QueryGroups raw = {{u" A\t", u" \r\n", u""}, {}, {u""}, {u"b"}};
  EXPECT_EQ(PrepareNameGroups(raw), (QueryGroups{{u"a"}, {u"b"}}));
}

TEST(PrepareNameGroups, ABackslashIsTheOneThatNamesHold) {
  EXPECT_EQ(Prepared(u"a\\\\b"), (QueryGroups{{std::u16string{u'a', kNameBackslash, u'b'}}}));
}

TEST(MatchName, EmptyQuotesMatchEveryName) {
  EXPECT_EQ(Prepared(u"\"\""), QueryGroups{});
  EXPECT_TRUE(MatchName(u"a.txt", Prepared(u"\"\"")));
  EXPECT_TRUE(MatchName(u"", {}));
}

TEST(MatchName, ATermIsASubstringOfTheNameWithItsExtension) {
  EXPECT_TRUE(MatchName(u"report.txt", Prepared(u"Port.T")));
  EXPECT_FALSE(MatchName(u"report.txt", Prepared(u"report txt")));
}

TEST(MatchName, EveryTermOfOneGroupMustBeThere) {
  EXPECT_TRUE(MatchName(u"annual report.txt", Prepared(u"report and annual")));
  EXPECT_FALSE(MatchName(u"report.txt", Prepared(u"report and annual")));
  EXPECT_TRUE(MatchName(u"report.txt", Prepared(u"report and annual or txt")));
}

TEST(MatchName, NoCharacterIsAWildcard) {
  EXPECT_FALSE(MatchName(u"report.txt", Prepared(u"*.txt")));
  EXPECT_FALSE(MatchName(u"report.txt", Prepared(u"report?txt")));
  EXPECT_TRUE(MatchName(u"a*.t?t", Prepared(u"*.t?t")));
}

TEST(MatchName, AnEmptyTermIsPassedOver) {
  EXPECT_TRUE(MatchName(u"abc", {{u"", u"b"}}));
  EXPECT_FALSE(MatchName(u"abc", {{u"", u"x"}}));
}

TEST(MatchName, TheNameEndsAtItsFirstNul) {
  const std::u16string name(u"ab\0cd", 5);
  EXPECT_TRUE(MatchName(name, {{u"ab"}}));
  EXPECT_FALSE(MatchName(name, {{u"cd"}}));
}

TEST(MatchName, ThePrefixOfAContentQueryAloneFindsNothing) {
  EXPECT_FALSE(ParseContentQuery(u"s:", kDefaultExts).Active);
  EXPECT_EQ(Prepared(u"s:"), (QueryGroups{{u"s:"}}));
  EXPECT_FALSE(MatchName(u"notes.txt", Prepared(u"s:")));
}

TEST(ParseContentQuery, SplitsWordsAndExtensions) {
  const ContentQuery query = ParseContentQuery(u"s:word and other|txt,.log,md", kDefaultExts);
  EXPECT_TRUE(query.Active);
  EXPECT_EQ(query.Groups, (QueryGroups{{u"word", u"other"}}));
  EXPECT_EQ(query.Exts, (std::vector<std::u16string>{u".txt", u".log", u".md"}));
}

TEST(ParseContentQuery, TermsKeepTheirCase) {
  EXPECT_EQ(ParseContentQuery(u"s:Word or OTHER", {}).Groups, (QueryGroups{{u"Word"}, {u"OTHER"}}));
}

TEST(ParseContentQuery, WithoutABarTheDefaultExtensionsServe) {
  const ContentQuery query = ParseContentQuery(u"s: abc ", kDefaultExts);
  EXPECT_TRUE(query.Active);
  EXPECT_EQ(query.Groups, (QueryGroups{{u"abc"}}));
  EXPECT_EQ(query.Exts, kDefaultExts);
}

TEST(ParseContentQuery, ABarWithNothingBehindItOpensNoFiles) {
  const ContentQuery query = ParseContentQuery(u"s:abc|", kDefaultExts);
  EXPECT_TRUE(query.Active);
  EXPECT_EQ(query.Groups, (QueryGroups{{u"abc"}}));
  EXPECT_TRUE(query.Exts.empty());
}

TEST(ParseContentQuery, ExtensionsAreFoldedTrimmedAndGetTheirDot) {
  const ContentQuery query = ParseContentQuery(u"s:abc|TXT, .Log,,", kDefaultExts);
  EXPECT_EQ(query.Exts, (std::vector<std::u16string>{u".txt", u".log"}));
}

TEST(ParseContentQuery, ExtensionsGivenTwiceStayTwice) {
  const ContentQuery query = ParseContentQuery(u"s:abc|txt,.txt", kDefaultExts);
  EXPECT_EQ(query.Exts, (std::vector<std::u16string>{u".txt", u".txt"}));
}

TEST(ParseContentQuery, TheFirstBarCountsEvenInQuotes) {
  const ContentQuery query = ParseContentQuery(u"s:\"a|b\"|c", kDefaultExts);
  EXPECT_EQ(query.Groups, (QueryGroups{{u"a"}}));
  EXPECT_EQ(query.Exts, (std::vector<std::u16string>{u".b\"|c"}));
}

TEST(ParseContentQuery, NothingToLookForIsNoContentQuery) {
  for (const char16_t* text : {u"", u"s", u"s:", u"s: \t", u"s:|txt", u"s:\"\"", u"s:\"\" or |txt"}) {
    EXPECT_FALSE(ParseContentQuery(text, kDefaultExts).Active) << testing::PrintToString(text);
  }
}

TEST(ParseContentQuery, ThePrefixIsLowerCaseAndStandsFirst) {
  EXPECT_FALSE(ParseContentQuery(u"S:foo", kDefaultExts).Active);
  EXPECT_FALSE(ParseContentQuery(u"as:foo", kDefaultExts).Active);
  EXPECT_FALSE(ParseContentQuery(u"\"s:foo\"", kDefaultExts).Active);
}

TEST(IsContentPrefix, TakesBothCasesAndBlanksInFront) {
  EXPECT_TRUE(IsContentPrefix(u"s:"));
  EXPECT_TRUE(IsContentPrefix(u"S:foo"));
  EXPECT_TRUE(IsContentPrefix(u" \t s:foo"));
}

TEST(IsContentPrefix, RefusesAnyOtherText) {
  for (const char16_t* text : {u"", u" ", u"s", u"s ", u"s :", u"as:", u"\u017F:", u"c:"}) {
    EXPECT_FALSE(IsContentPrefix(text)) << testing::PrintToString(text);
  }
}

// A second parser, in two passes. The first writes what each character of the text adds to a term, and a
// mask in which only characters outside quotes and escapes are readable; the second cuts both at the
// operators of the mask.
struct MaskedText {
  std::vector<std::u16string> added;  // per character: itself, or nothing
  std::string mask;
};

MaskedText MaskOf(std::u16string_view text) {
  MaskedText masked;
  bool quoted = false, escaped = false;
  for (const char16_t unit : text) {
    const bool syntax = !escaped && (unit == u'\\' || unit == u'"');
    const char plain = unit == u'\t' ? ' ' : static_cast<char>(std::tolower(unit));
    masked.added.emplace_back(syntax ? 0 : 1, unit);
    masked.mask += syntax || escaped || quoted ? '#' : plain;
    quoted ^= syntax && unit == u'"';
    escaped = syntax && unit == u'\\';
  }
  return masked;
}

std::u16string TermBetween(const MaskedText& masked, size_t begin, size_t end) {
  std::u16string term;
  for (size_t i = begin; i < end; ++i) term += masked.added[i];
  while (!term.empty() && (term.back() == u' ' || term.back() == u'\t')) term.pop_back();
  while (!term.empty() && (term.front() == u' ' || term.front() == u'\t')) term.erase(0, 1);
  return term;
}

QueryGroups ParseByMask(std::u16string_view text) {
  const MaskedText masked = MaskOf(text);
  QueryGroups groups(1);
  for (size_t begin = 0; begin <= text.size();) {
    const size_t atAnd = std::min(masked.mask.find(" and ", begin), text.size());
    const size_t atOr = std::min(masked.mask.find(" or ", begin), text.size());
    const size_t end = std::min(atAnd, atOr);
    groups.back().push_back(TermBetween(masked, begin, end));
    if (atOr < atAnd) groups.emplace_back();
    begin = end == text.size() ? end + 1 : end + (atAnd < atOr ? 5 : 4);
  }
  for (auto& group : groups) std::erase(group, u"");
  std::erase(groups, std::vector<std::u16string>{});
  return groups;
}

TEST(ParseQueryGroups, AgreesWithAParserInTwoPasses) {
  const std::u16string pieces[] = {u"a", u"A", u" ", u"\t", u"\"", u"\\", u"and", u"or", u"AND"};
  std::mt19937 random(1);
  size_t withAnd = 0, withOr = 0;
  for (int round = 0; round < 100'000; ++round) {
    std::u16string text;
    for (size_t left = random() % 20; left > 0; --left) text += pieces[random() % std::size(pieces)];
    const QueryGroups groups = ParseQueryGroups(text);
    ASSERT_EQ(groups, ParseByMask(text)) << testing::PrintToString(text);
    withOr += groups.size() > 1;
    withAnd += !groups.empty() && groups[0].size() > 1;
  }
  EXPECT_GT(withAnd, 1'000u);
  EXPECT_GT(withOr, 1'000u);
}

}  // namespace
}  // namespace quilmark
