#include "cli/filter_options.h"

#include <gtest/gtest.h>

#include "search/sort/sort.h"

namespace quilmark {
namespace {

constexpr int64_t kKilo = 1'024, kMega = 1'024 * kKilo, kGiga = 1'024 * kMega, kTera = 1'024 * kGiga;
constexpr FileTime kDay = 24 * 3'600 * kFileTimePerSecond;
constexpr FileTime kEndOfTime = std::numeric_limits<FileTime>::max();

FileTime Local(int year, int month, int day, int hour = 0) {
  return FileTimeOfLocal({.year = year, .month = month, .day = day, .hour = hour}).value();
}

SizeRange Sizes(const std::string& text) {
  const auto parsed = ParseSizeRange(text);
  EXPECT_EQ(parsed.error, "") << text;
  return parsed.value;
}

DateRange Dates(const std::string& text, FileTime now) {
  const auto parsed = ParseDateRange(text, now);
  EXPECT_EQ(parsed.error, "") << text;
  return parsed.value;
}

SortOrder Order(const std::string& text) {
  const auto parsed = ParseSortOrder(text);
  EXPECT_EQ(parsed.error, "") << text;
  return parsed.value;
}

// The parser refuses each text with `reason` in its words.
template <typename Parser>
void ExpectRefused(Parser parser, const std::string& reason, const std::vector<std::string>& texts) {
  for (const std::string& text : texts) {
    EXPECT_NE(parser(text).error.find(reason), std::string::npos)
        << "'" << text << "': " << parser(text).error;
  }
}

TEST(SizeRange, ARangeHasTwoEndsOrOne) {
  EXPECT_EQ(Sizes("10M..2G"), (SizeRange{10 * kMega, 2 * kGiga}));
  EXPECT_EQ(Sizes("10M.."), (SizeRange{10 * kMega, -1}));
  EXPECT_EQ(Sizes("..2G"), (SizeRange{-1, 2 * kGiga}));
  EXPECT_EQ(Sizes("5..5"), (SizeRange{5, 5}));
}

TEST(SizeRange, ASizeAloneIsTheLeast) { EXPECT_EQ(Sizes("10M"), (SizeRange{10 * kMega, -1})); }

TEST(SizeRange, UnitsArePowersOf1024InEitherCase) {
  EXPECT_EQ(Sizes("7..8B"), (SizeRange{7, 8}));
  EXPECT_EQ(Sizes("1k..1K"), (SizeRange{kKilo, kKilo}));
  EXPECT_EQ(Sizes("1m..1M"), (SizeRange{kMega, kMega}));
  EXPECT_EQ(Sizes("1g..1G"), (SizeRange{kGiga, kGiga}));
  EXPECT_EQ(Sizes("1t..1T"), (SizeRange{kTera, kTera}));
  EXPECT_EQ(Sizes("0").least, 0);
}

TEST(SizeRange, DecimalsAreCutToWholeBytes) {
  EXPECT_EQ(Sizes("1.5G..2.25G"), (SizeRange{kGiga + kGiga / 2, 2 * kGiga + kGiga / 4}));
  EXPECT_EQ(Sizes("0.000001T").least, 1'099'511);
  EXPECT_EQ(Sizes("1.999999").least, 1);
}

TEST(SizeRange, TheLargestNumberIsTaken) {
  EXPECT_EQ(Sizes("9223372036854775807").least, std::numeric_limits<int64_t>::max());
  EXPECT_EQ(Sizes("8388607T").least, 8'388'607 * kTera);
  EXPECT_EQ(Sizes("8388607.999999T").least, 8'388'607 * kTera + 1'099'510'528'264);
}

TEST(SizeRange, MistakesAreRefused) {
  ExpectRefused(ParseSizeRange, "empty", {"", ".."});
  ExpectRefused(ParseSizeRange, "reversed", {"2G..10M", "2..1"});
  ExpectRefused(ParseSizeRange, "unknown unit", {"10X", "10MB", "1..2KiB", "10 M", "3M..4-", "1.5.5"});
  ExpectRefused(
      ParseSizeRange, "too large",
      {"9223372036854775808", "8388608T", "..99999999999999999999999999", "9007199254740992K"});
  ExpectRefused(ParseSizeRange, "is no size", {"M", "-5", "+5", "1...5", "ten", "1..2..3", "1.M", " 1"});
  ExpectRefused(ParseSizeRange, "decimals", {"1.0000001M"});
}

TEST(DateRange, AnAgeReachesFromThenOn) {
  const FileTime now = Local(2025, 3, 15, 13);
  EXPECT_EQ(Dates("7d", now), (DateRange{now - 7 * kDay, kEndOfTime}));
  EXPECT_EQ(Dates("1d", now), (DateRange{now - kDay, kEndOfTime}));
  EXPECT_EQ(Dates("2w", now), (DateRange{now - 14 * kDay, kEndOfTime}));
  EXPECT_EQ(Dates("2W", now), Dates("14d", now));
}

TEST(DateRange, MonthsAndYearsFollowTheCalendar) {
  EXPECT_EQ(Dates("1mo", Local(2025, 3, 15, 13)).from, Local(2025, 2, 15, 13));
  EXPECT_EQ(Dates("1mo", Local(2025, 3, 31, 13)).from, Local(2025, 2, 28, 13));
  EXPECT_EQ(Dates("14mo", Local(2025, 1, 5, 13)).from, Local(2023, 11, 5, 13));
  EXPECT_EQ(Dates("1y", Local(2024, 2, 29, 13)).from, Local(2023, 2, 28, 13));
  EXPECT_EQ(Dates("4y", Local(2024, 2, 29, 13)).from, Local(2020, 2, 29, 13));
}

TEST(DateRange, ADayReachesFromItsFirstMomentToItsLast) {
  const FileTime now = Local(2025, 3, 1, 13);
  const DateRange lastOfFebruary{Local(2025, 2, 28), Local(2025, 3, 1) - 1};
  EXPECT_EQ(Dates("2025-02-28", now), lastOfFebruary);
  EXPECT_EQ(Dates("yesterday", now), lastOfFebruary);
  EXPECT_EQ(Dates("Yesterday", now), lastOfFebruary);
  EXPECT_EQ(Dates("today", now), (DateRange{Local(2025, 3, 1), Local(2025, 3, 2) - 1}));
  EXPECT_EQ(Dates("2024-02-29", now), (DateRange{Local(2024, 2, 29), Local(2024, 3, 1) - 1}));
  EXPECT_EQ(Dates("2024-12-31", now), (DateRange{Local(2024, 12, 31), Local(2025, 1, 1) - 1}));
}

TEST(DateRange, ARangeTakesBothOfItsDays) {
  const FileTime now = Local(2025, 3, 15, 13);
  EXPECT_EQ(Dates("2025-01-01..2025-02-01", now), (DateRange{Local(2025, 1, 1), Local(2025, 2, 2) - 1}));
  EXPECT_EQ(Dates("2025-01-01..2025-01-01", now), Dates("2025-01-01", now));
  EXPECT_EQ(Dates("2025-01-01..", now), (DateRange{Local(2025, 1, 1), kEndOfTime}));
  EXPECT_EQ(Dates("..2025-02-01", now), (DateRange{0, Local(2025, 2, 2) - 1}));
  EXPECT_EQ(Dates("2025-03-01..yesterday", now), (DateRange{Local(2025, 3, 1), Local(2025, 3, 15) - 1}));
}

TEST(DateRange, MistakesAreRefused) {
  const auto parse = [](const std::string& text) {
    return ParseDateRange(text, Local(2025, 3, 15, 13));
  };
  ExpectRefused(parse, "empty", {"", ".."});
  ExpectRefused(parse, "reversed", {"2025-02-01..2025-01-01", "today..yesterday"});
  ExpectRefused(parse, "no day of the calendar",
                {"2025-02-30", "2025-02-29", "2025-13-01", "2025-00-10", "2025-01-00", "1600-12-31",
                 "0000-01-01", "2025-01-01..2025-04-31"});
  ExpectRefused(parse, "no date",
                {"2025-1-1", "25-01-01", "2025/01/01", "2025-01-01T00:00", "soon", "2025-01-01 ", "-7d",
                 "7d..2d", "2025-01-01..7d", "a..b..c"});
  ExpectRefused(parse, "unknown unit", {"7", "7m", "7h", "7days"});
  ExpectRefused(parse, "too long ago",
                {"200001d", "199999d", "50000w", "65536y", "786432mo", "500y", "6000mo",
                 "99999999999999999999999d"});
  ExpectRefused(parse, "no time at all", {"0d", "0mo"});
}

TEST(SortOrder, ColumnsHaveADirectionOfTheirOwn) {
  EXPECT_EQ(Order("name"), (SortOrder{kColumnName, true}));
  EXPECT_EQ(Order("size"), (SortOrder{kColumnSize, false}));
  EXPECT_EQ(Order("modified"), (SortOrder{kColumnModified, true}));
  EXPECT_EQ(Order("created"), (SortOrder{kColumnCreated, true}));
  EXPECT_EQ(Order("Path"), (SortOrder{kColumnOfPath, true}));
}

TEST(SortOrder, ADirectionMayBeNamed) {
  EXPECT_EQ(Order("size:asc"), (SortOrder{kColumnSize, true}));
  EXPECT_EQ(Order("size:desc"), (SortOrder{kColumnSize, false}));
  EXPECT_EQ(Order("name:DESC"), (SortOrder{kColumnName, false}));
}

TEST(SortOrder, MistakesAreRefused) {
  ExpectRefused(ParseSortOrder, "is no column: name, size, modified, created, path",
                {"", "date", "names", ":asc", "size desc"});
  ExpectRefused(ParseSortOrder, "is no direction: asc, desc", {"size:", "size:up", "size:asc:desc"});
}

TEST(Extensions, AreFoldedAndGetADot) {
  const auto parsed = ParseExtensions("pdf, .DOCX,,");
  EXPECT_EQ(parsed.error, "");
  EXPECT_EQ(parsed.value, (std::vector<std::u16string>{u".pdf", u".docx"}));
}

TEST(Extensions, ThoseThatCouldNotMatchAreRefused) {
  ExpectRefused(ParseExtensions, "no extension", {"", " , ,"});
  ExpectRefused(ParseExtensions, "'tar.gz' has a dot within", {"tar.gz", "txt,.tar.gz"});
  ExpectRefused(ParseExtensions, "stand for folders", {"dir,txt", "pdf,folder"});
  EXPECT_EQ(ParseExtensions("dir").error, "");
}

TEST(Category, IsFoundByItsLabelInAnyCase) {
  const FilterTable table = DefaultCategories(false);
  EXPECT_EQ(FindCategory(table, "All Files").value, 0u);
  EXPECT_EQ(FindCategory(table, "images").value, 3u);
  EXPECT_EQ(FindCategory(DefaultCategories(true), "\xE5\x9B\xBE\xE7\x89\x87").value, 3u);
}

TEST(Category, AWrongNameListsTheRightOnes) {
  EXPECT_EQ(FindCategory({{u"All", {}}, {u"Notes", {u".md"}}}, "note").error,
            "'note' is no category: All, Notes");
}

}  // namespace
}  // namespace quilmark
