#include "platform/initial_letters.h"

#include <gtest/gtest.h>

#include "platform/initial_letters_table.h"

namespace quilmark {
namespace {

TEST(InitialLetters, TheBlockOfIdeographsHasItsEnds) {
  EXPECT_FALSE(IsIdeograph(kFirstIdeograph - 1));
  EXPECT_TRUE(IsIdeograph(kFirstIdeograph));
  EXPECT_TRUE(IsIdeograph(kLastIdeograph));
  EXPECT_FALSE(IsIdeograph(kLastIdeograph + 1));
}

TEST(InitialLetters, TheTableHasALetterOrADotForEachUnit) {
  for (size_t i = 0; i <= size_t{kLastIdeograph} - kFirstIdeograph; ++i) {
    const char letter = kInitialLetters[i];
    ASSERT_TRUE(letter == '.' || (letter >= 'a' && letter <= 'z')) << i;
    const auto unit = static_cast<char16_t>(kFirstIdeograph + i);
    ASSERT_EQ(InitialLetterOf(unit), letter == '.' ? 0 : letter) << i;
  }
  EXPECT_EQ(kInitialLetters[kLastIdeograph - kFirstIdeograph + 1], '\0');
}

TEST(InitialLetters, AKeyHasFoldedLettersDigitsAndReadings) {
  EXPECT_EQ(InitialsKeyUnitOf(u'a'), u'a');
  EXPECT_EQ(InitialsKeyUnitOf(u'A'), u'a');
  EXPECT_EQ(InitialsKeyUnitOf(u'Z'), u'z');
  EXPECT_EQ(InitialsKeyUnitOf(u'7'), u'7');
  EXPECT_EQ(InitialsKeyUnitOf(u'\u5317'), u'b');  // bei
  for (const char16_t unit :
       {u' ', u'_', u'.', u'@', u'[', u'`', u'{', u'/', u':', u'\u00E4', u'\uFF21'}) {
    EXPECT_EQ(InitialsKeyUnitOf(unit), 0) << static_cast<int>(unit);
  }
}

TEST(InitialLetters, AStemEndsAtTheFirstDotAndHoldsAnIdeograph) {
  EXPECT_EQ(InitialsStemOf(u"北京.tar.gz"), u"北京");
  EXPECT_EQ(InitialsStemOf(u"a北"), u"a北");
  EXPECT_EQ(InitialsStemOf(u"report.北"), u"") << "behind the dot";
  EXPECT_EQ(InitialsStemOf(u"report"), u"");
  EXPECT_EQ(InitialsStemOf(u".北"), u"");
  EXPECT_EQ(InitialsStemOf(u""), u"");
}

}  // namespace
}  // namespace quilmark
