#include "shell/list/cell_text.h"

#include <gtest/gtest.h>

namespace quilmark {
namespace {

TEST(CellText, WritesSizesByTheirOrder) {
  EXPECT_EQ(SizeText(0), u"0 B");
  EXPECT_EQ(SizeText(1'023), u"1023 B");
  EXPECT_EQ(SizeText(1'024), u"1 KB");
  EXPECT_EQ(SizeText(0xF'FFFF), u"1023 KB");
  EXPECT_EQ(SizeText(0x10'0000), u"1.00 MB");
  EXPECT_EQ(SizeText(0x3FFF'FFFF), u"1024.00 MB");
  EXPECT_EQ(SizeText(0x4000'0000), u"1.00 GB");
  EXPECT_EQ(SizeText(5'000'000'000'000), u"4656.61 GB");
}

TEST(CellText, WritesLocalTimesToTheMinute) {
  const auto textOf = [](const LocalTime& local) { return TimeText(FileTimeOfLocal(local).value()); };
  EXPECT_EQ(textOf({.year = 2025, .month = 1, .day = 9, .hour = 7, .minute = 5, .second = 59}),
            u"2025-01-09 07:05");
  EXPECT_EQ(textOf({.year = 1999, .month = 12, .day = 31, .hour = 23, .minute = 59}),
            u"1999-12-31 23:59");
  EXPECT_EQ(textOf({.year = 2024, .month = 2, .day = 29}), u"2024-02-29 00:00");
}

TEST(CellText, WritesNoTimeForNone) { EXPECT_EQ(TimeText(0), u"-"); }

TEST(CellText, NumbersRowsFromOne) {
  EXPECT_EQ(RowNumberText(0), u"01");
  EXPECT_EQ(RowNumberText(98), u"99");
  EXPECT_EQ(RowNumberText(99), u"100");
  EXPECT_EQ(RowNumberText(9'999'999), u"10000000");
}

}  // namespace
}  // namespace quilmark
