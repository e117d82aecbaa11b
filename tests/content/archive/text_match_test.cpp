#include "content/archive/text_match.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

#include "platform/generation.h"
#include "platform/utf.h"

namespace quilmark {
namespace {

const WorkCheck kGoesOn(Ticket::Unlimited());

ArchiveTerms TermsOf(const WideGroups& groups) {
  return MakeArchiveTerms(MakeContentGroups(groups), groups);
}

bool Bytes(std::string_view text, const WideGroups& groups) {
  ArchiveScratch scratch;
  return MatchCompactBytes(text, TermsOf(groups), kGoesOn, scratch);
}
bool Wide(std::u16string_view text, const WideGroups& groups) {
  ArchiveScratch scratch;
  return MatchWideGroups(text, TermsOf(groups), kGoesOn, scratch);
}
bool AsWide(std::string_view text, const WideGroups& groups) {
  ArchiveScratch scratch;
  return MatchUtf8AsWide(text, TermsOf(groups), kGoesOn, scratch);
}

TEST(TextMatch, FindsAWordInPieces) {
  EXPECT_TRUE(Bytes("say Hel lo there", {{u"Hello"}}));
  EXPECT_TRUE(Wide(u"say Hel lo there", {{u"Hello"}}));
  EXPECT_TRUE(AsWide("say Hel lo there", {{u"Hello"}}));
  EXPECT_FALSE(Bytes("say Hel lo there", {{u"hello"}}));
  EXPECT_FALSE(Wide(u"say Hel-lo there", {{u"Hello"}}));
}

TEST(TextMatch, FindsTermsWithBlanksWithoutThem) {
  EXPECT_TRUE(Bytes("thisandthat", {{u"and that"}}));
  EXPECT_TRUE(Wide(u"thisandthat", {{u"and that"}}));
}

TEST(TextMatch, WantsAllTermsOfOneGroup) {
  for (const auto match : {+[](const WideGroups& groups) { return Bytes("one two", groups); },
                           +[](const WideGroups& groups) { return Wide(u"one two", groups); },
                           +[](const WideGroups& groups) { return AsWide("one two", groups); }}) {
    EXPECT_TRUE(match({{u"two", u"one"}}));
    EXPECT_FALSE(match({{u"one", u"three"}}));
    EXPECT_TRUE(match({{u"three"}, {u"one"}}));
    EXPECT_FALSE(match({}));
    EXPECT_FALSE(match({{}}));
  }
}

TEST(TextMatch, DropsItsListOfWhiteSpaceFromBytes) {
  std::string text = "a \t\n\r\xC2\xA0\xE3\x80\x80\xE2\x80\x8B z\xC2\xA1\xE3\x80\x81\xE2\x80\x8C\v\xC2";
  text.resize(CompactBytes(text, text.data()));
  EXPECT_EQ(text, "az\xC2\xA1\xE3\x80\x81\xE2\x80\x8C\v\xC2");
  std::string blanks = " \t ";
  EXPECT_EQ(CompactBytes(blanks, blanks.data()), 0u);
}

TEST(TextMatch, DropsItsListOfWhiteSpaceFromUnits) {
  std::u16string dropped;
  for (char32_t unit = 0; unit < 0x10000; ++unit) {
    const auto one = static_cast<char16_t>(unit);
    char16_t out;
    if (CompactUnits({&one, 1}, &out) == 0) dropped.push_back(one);
  }
  EXPECT_EQ(dropped,
            std::u16string(u"\t\n\v\f\r \u0085\u00A0\u1680\u2000\u2001\u2002\u2003\u2004\u2005\u2006"
                           u"\u2007\u2008\u2009\u200A\u200B\u200C\u200D\u200E\u200F\u2028\u2029\u202A"
                           u"\u202B\u202C\u202D\u202E\u202F\u205F\u2060\u3000\uFEFF"));
}

TEST(TextMatch, ATermOfWhiteSpaceIsFoundAsItIsAlone) {
  EXPECT_TRUE(Wide(u"a b", {{u" "}}));
  EXPECT_FALSE(Wide(u"ab", {{u" "}}));
  EXPECT_TRUE(Bytes("a b", {{u" "}}));
  EXPECT_FALSE(Bytes("ab", {{u" "}}));
}

TEST(TextMatch, AnEmptyTermCountsAsFoundInWideTextsAlone) {
  EXPECT_TRUE(Wide(u"a", {{u"", u"a"}}));
  EXPECT_TRUE(Wide(u"a", {{u""}}));
  EXPECT_FALSE(Wide(u"", {{u""}}));
  EXPECT_FALSE(Bytes("a", {{u""}}));
}

TEST(TextMatch, ReadsMalformedBytesAsWide) {
  EXPECT_TRUE(AsWide("a\xFFz", {{u"z"}}));
  EXPECT_TRUE(AsWide("a\xFFz", {{u"a\uFFFDz"}}));
}

TEST(TextMatch, FindsNothingWhenTheWorkIsStale) {
  const WorkCheck isStale{Ticket()};
  ArchiveScratch scratch;
  const ArchiveTerms terms = TermsOf({{u"a"}});
  EXPECT_FALSE(MatchCompactBytes("a", terms, isStale, scratch));
  EXPECT_FALSE(MatchWideGroups(u"a", terms, isStale, scratch));
  EXPECT_FALSE(MatchUtf8AsWide("a", terms, isStale, scratch));
}

TEST(TextMatch, FindsTermsAcrossEverySeam) {
  // Blocks of the search, and the steps between two checks.
  for (const size_t length : {1u, 2u, 3u, 65u}) {
    const std::u16string term = u"b" + std::u16string(length - 1, u'c');
    for (const size_t at : {0u, 62u, 63u, 64u, 127u, 1000u, 262'143u - 30u, 262'143u, 262'144u}) {
      std::u16string text(at, u'a');
      text += term;
      EXPECT_TRUE(Wide(text, {{term}})) << at << ' ' << length;
      text.pop_back();
      EXPECT_FALSE(Wide(text + u"b", {{term + u"b"}})) << at << ' ' << length;
    }
  }
}

TEST(TextMatch, AgreesWithAPlainSearch) {
  std::mt19937 random(8);
  const auto text = [&random](size_t most) {
    std::u16string made(random() % (most + 1), u'a');
    for (char16_t& unit : made) unit = u"ab \u3000"[random() % 4];
    return made;
  };
  for (int i = 0; i < 2000; ++i) {
    const std::u16string hay = text(200), term = text(5);
    std::u16string compactHay, compactTerm;
    for (const char16_t unit : hay) {
      if (unit == u'a' || unit == u'b') compactHay.push_back(unit);
    }
    for (const char16_t unit : term) {
      if (unit == u'a' || unit == u'b') compactTerm.push_back(unit);
    }
    const bool isFound = hay.find(term) != std::u16string::npos ||
                         (!compactTerm.empty() && compactHay.find(compactTerm) != std::u16string::npos);
    ASSERT_EQ(Wide(hay, {{term}}), isFound && !hay.empty());
    ASSERT_EQ(AsWide(ToUtf8(hay), {{term}}), isFound && !hay.empty());
    // An ideographic blank may look like another one in the ANSI code page, which is looked for too.
    const bool hasOneForm = !term.empty() && term.find(u'\u3000') == std::u16string::npos;
    if (hasOneForm) ASSERT_EQ(Bytes(ToUtf8(hay), {{term}}), isFound && !hay.empty());
  }
}

}  // namespace
}  // namespace quilmark
