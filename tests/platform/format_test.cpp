#include "platform/format.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <limits>
#include <random>
#include <string>
#include <vector>

namespace quilmark {
namespace {

// What the C library prints, for forms and values on which the two have to agree.
template <typename T>
std::u16string Printed(const std::string& pattern, T value) {
  char buffer[2'048];
  const int size = std::snprintf(buffer, sizeof buffer, pattern.c_str(), value);
  return std::u16string(buffer, buffer + size);
}

std::u16string Wide(const std::string& ascii) { return std::u16string(ascii.begin(), ascii.end()); }

TEST(FormatText, FillsTheFormsInOrder) {
  EXPECT_EQ(FormatText(u"%d of %llu: %ls", 3, uint64_t{12}, u"done"), u"3 of 12: done");
  EXPECT_EQ(FormatText(u"[%04u-%02u-%02u]", 2024, 3, 9), u"[2024-03-09]");
}

TEST(FormatText, TakesEveryKindOfArgument) {
  const std::u16string owned = u"owned";
  EXPECT_EQ(FormatText(u"%s %s %s", u"literal", owned, std::u16string_view(u"view")),
            u"literal owned view");
  EXPECT_EQ(FormatText(u"%d %d %d", static_cast<short>(-5), 7u, size_t{9}), u"-5 7 9");
  EXPECT_EQ(FormatText(u"%.1f %.1f", 1.5f, 2.5), u"1.5 2.5");
  EXPECT_EQ(FormatText(u"%c%c", u'o', u'k'), u"ok");
}

TEST(FormatText, PrintsAPercentSignForTwo) {
  EXPECT_EQ(FormatText(u"100%%"), u"100%");
  EXPECT_EQ(FormatText(u"%d%% of %d%%", 5, 7), u"5% of 7%");
  EXPECT_EQ(FormatText(u"%%d", 5), u"%d");
}

TEST(FormatText, KnowsEveryLengthPrefixAndIgnoresIt) {
  for (const std::u16string_view prefix :
       {u"", u"hh", u"h", u"l", u"ll", u"z", u"j", u"t", u"w", u"I64"}) {
    const std::u16string form = u"%" + std::u16string(prefix);
    EXPECT_EQ(FormatText(form + u"d", int64_t{-5'000'000'000}), u"-5000000000");
    EXPECT_EQ(FormatText(form + u"s", u"text"), u"text");
  }
}

TEST(FormatText, LeavesAFormWithoutAnArgumentAsItStands) {
  EXPECT_EQ(FormatText(u"%d and %-5ls!"), u"%d and %-5ls!");
  EXPECT_EQ(FormatText(u"%d and %08.3f%%", 1), u"1 and %08.3f%");
}

TEST(FormatText, LeavesAnUnknownFormAsItStandsAndKeepsItsArgument) {
  EXPECT_EQ(FormatText(u"%n%d", 1), u"%n1");
  EXPECT_EQ(FormatText(u"%*d %d", 1), u"%*d 1");
  EXPECT_EQ(FormatText(u"%1$s %s", u"x"), u"%1$s x");
  EXPECT_EQ(FormatText(u"%e %p %I32d %d", 1), u"%e %p %I32d 1");
  EXPECT_EQ(FormatText(u"50%, %d", 1), u"50%, 1");
  EXPECT_EQ(FormatText(u"%.-5d %5%d", 1), u"%.-5d %51");
}

TEST(FormatText, LeavesAPatternThatEndsWithinAForm) {
  for (const std::u16string_view pattern : {u"%", u"%-", u"%08", u"%8.", u"%8.2", u"%ll", u"%I64"}) {
    EXPECT_EQ(FormatText(pattern, 1), pattern);
  }
}

TEST(FormatText, IgnoresArgumentsThatNoFormTakes) { EXPECT_EQ(FormatText(u"%d", 1, 2, u"x"), u"1"); }

TEST(FormatText, PrintsATextUnderANumberFormAsItIs) {
  EXPECT_EQ(FormatText(u"%d %u %x %c %f", u"a", u"b", u"c", u"dd", u"e"), u"a b c dd e");
  EXPECT_EQ(FormatText(u"%.1d|%05d|%-5d|", u"abc", u"abc", u"abc"), u"abc|  abc|abc  |");
}

TEST(FormatText, PrintsANumberUnderATextFormByItsDigits) {
  EXPECT_EQ(FormatText(u"%s %ls %s", -42, std::numeric_limits<uint64_t>::max(), 0.5),
            u"-42 18446744073709551615 0.5");
  EXPECT_EQ(FormatText(u"%5s|%-5s|%05s", 42, 42, 42), u"   42|42   |   42");
}

TEST(FormatText, ConvertsANumberByItsOwnType) {
  EXPECT_EQ(FormatText(u"%d", std::numeric_limits<uint64_t>::max()), u"18446744073709551615");
  EXPECT_EQ(FormatText(u"%d", std::numeric_limits<int64_t>::min()), u"-9223372036854775808");
  EXPECT_EQ(FormatText(u"%.2f", int64_t{9'007'199'254'740'993}), u"9007199254740993.00");
  EXPECT_EQ(FormatText(u"%d %5.3d", 2.75, -0.5), u"3    -0");
}

TEST(FormatText, WrapsANegativeNumberUnderAnUnsignedForm) {
  EXPECT_EQ(FormatText(u"%u", -1), u"18446744073709551615");
  EXPECT_EQ(FormatText(u"%x", -1), u"ffffffffffffffff");
  EXPECT_EQ(FormatText(u"%02X", -2), u"FFFFFFFFFFFFFFFE");
}

TEST(FormatText, CountsWidthAndPrecisionAboveAThousandAsAThousand) {
  EXPECT_EQ(FormatText(u"%1001d", 1).size(), 1'000u);
  EXPECT_EQ(FormatText(u"%99999999999999999999s", u"x").size(), 1'000u);
  EXPECT_EQ(FormatText(u"%.5000d", 1).size(), 1'000u);
  EXPECT_EQ(FormatText(u"%.99999f", 0.5).size(), 1'002u);
}

TEST(FormatText, CutsATextAtItsPrecision) {
  EXPECT_EQ(FormatText(u"%.3s|%.9s|%.0s|%.s|", u"abcdef", u"abc", u"abc", u"abc"), u"abc|abc|||");
  EXPECT_EQ(FormatText(u"%5.2s|%-5.2s|", u"abc", u"abc"), u"   ab|ab   |");
}

TEST(FormatText, DoesNotCutACharacterInTwo) {
  EXPECT_EQ(FormatText(u"%.2s", u"a\U0001F600b"), u"a");
  EXPECT_EQ(FormatText(u"%.3s", u"a\U0001F600b"), u"a\U0001F600");
  EXPECT_EQ(FormatText(u"%.1s", u"\U0001F600"), u"");
}

TEST(FormatText, PrintsACharacterByItsNumber) {
  EXPECT_EQ(FormatText(u"%c%c%c", 65, 0x4F60, 0x1F600), u"A\u4F60\U0001F600");
  EXPECT_EQ(FormatText(u"%c%c%c", -1, 0xD800, 0x110000), u"\uFFFD\uFFFD\uFFFD");
  EXPECT_EQ(FormatText(u"%3c|%-3c|", u'x', u'x'), u"  x|x  |");
}

// Every form of a conversion with flags that C defines for it.
std::vector<std::string> FormsOf(const std::vector<std::string>& flags, const std::string& conversion) {
  std::vector<std::string> forms;
  for (const std::string& flag : flags) {
    for (const char* columns : {"", "1", "8", ".0", ".1", ".6", "8.3", "3.8"}) {
      forms.push_back("%" + flag + columns + conversion);
    }
  }
  return forms;
}

constexpr int kIntegers[] = {0, 1, -1, 255, -4096, std::numeric_limits<int>::max()};

TEST(FormatText, PrintsSignedNumbersAsTheCLibraryDoes) {
  for (const char* conversion : {"d", "i"}) {
    for (const std::string& form :
         FormsOf({"", "-", "0", "+", " ", "-0", "+ ", "0+", "-+ 0"}, conversion)) {
      for (const int value : kIntegers) {
        ASSERT_EQ(FormatText(Wide(form), value), Printed(form, value)) << form << " " << value;
      }
    }
  }
}

TEST(FormatText, PrintsUnsignedNumbersAsTheCLibraryDoes) {
  std::vector<std::string> forms = FormsOf({"", "-", "0", "-0"}, "llu");
  for (const char* conversion : {"llx", "llX"}) {
    for (std::string& form : FormsOf({"", "-", "0", "#", "-#", "0#", "-0#"}, conversion)) {
      forms.push_back(std::move(form));
    }
  }
  for (const std::string& form : forms) {
    for (const int value : kIntegers) {
      const auto number = static_cast<unsigned long long>(value);
      ASSERT_EQ(FormatText(Wide(form), value), Printed(form, number)) << form << " " << value;
    }
  }
}

TEST(FormatText, PrintsDecimalsAsTheCLibraryDoes) {
  std::mt19937_64 random(5);
  std::uniform_real_distribution<double> usual(-2'000, 2'000);
  for (const char* form :
       {"%f", "%.0f", "%.1f", "%.2f", "%8.3f", "%-9.1f", "%+09.2f", "% .1f", "%#.0f", "%.40f"}) {
    for (const double value :
         {0.0, -0.0, 0.05, 0.15, 0.25, 0.35, 2.5, 3.5, 999.95, 1e22, 1e300, 5e-324, -1.005}) {
      ASSERT_EQ(FormatText(Wide(form), value), Printed(form, value)) << form << " " << value;
    }
    for (int round = 0; round < 500; ++round) {
      const double value = usual(random);
      ASSERT_EQ(FormatText(Wide(form), value), Printed(form, value)) << form << " " << value;
    }
  }
}

TEST(FormatText, PrintsWhatIsNoNumberWithoutZeros) {
  EXPECT_EQ(FormatText(u"%6.1f", std::numeric_limits<double>::infinity()), u"   inf");
  EXPECT_EQ(FormatText(u"%06f", -std::numeric_limits<double>::infinity()), u"  -inf");
  EXPECT_EQ(FormatText(u"%#.0f", std::numeric_limits<double>::quiet_NaN()), u"nan");
}

TEST(FormatText, KeepsTextAroundTheForms) {
  EXPECT_EQ(FormatText(u""), u"");
  EXPECT_EQ(FormatText(u"\u627E\u5230 %d \u4E2A\u7ED3\u679C", 7), u"\u627E\u5230 7 \u4E2A\u7ED3\u679C");
}

}  // namespace
}  // namespace quilmark
