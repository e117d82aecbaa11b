#include "shell/actions/recent_file.h"

#include <gtest/gtest.h>

namespace quilmark {
namespace {

std::vector<std::u16string> PathsOf(const std::vector<RecentOpenEntry>& entries) {
  std::vector<std::u16string> paths;
  for (const RecentOpenEntry& entry : entries) paths.push_back(entry.path);
  return paths;
}

using Paths = std::vector<std::u16string>;

TEST(RecentFile, HasALineAnEntry) {
  const std::vector<RecentOpenEntry> entries = {
      {.openedAt = 18'446'744'073'709'551'615u, .path = u"C:\\b"},
      {.openedAt = 5, .path = u"C:\\文件 a.txt"}};
  const std::u16string text = RecentOpensText(entries);
  EXPECT_EQ(text, u"18446744073709551615\tC:\\b\n5\tC:\\文件 a.txt\n");
  const auto read = ReadRecentOpens(text);
  EXPECT_EQ(PathsOf(read), (Paths{u"C:\\b", u"C:\\文件 a.txt"}));
  EXPECT_EQ(read[0].openedAt, 18'446'744'073'709'551'615u);
  EXPECT_EQ(read[1].openedAt, 5u);
  EXPECT_EQ(read[0].volume, nullptr);
}

TEST(RecentFile, LinesWithoutATabOrAPathArePassedOver) {
  EXPECT_EQ(PathsOf(ReadRecentOpens(u"C:\\a\n5\n\t\n7\t\n\tC:\\b\n  9\tC:\\c \r\n")), Paths{u"C:\\c"});
  EXPECT_TRUE(ReadRecentOpens(u"").empty());
}

TEST(RecentFile, ABadNumberCountsAsZero) {
  const auto entries =
      ReadRecentOpens(u"x1\tC:\\a\n12x\tC:\\b\n-3\tC:\\c\n99999999999999999999999\tC:\\d");
  ASSERT_EQ(entries.size(), 4u);
  EXPECT_EQ(entries[0].openedAt, 0u);
  EXPECT_EQ(entries[1].openedAt, 12u);
  EXPECT_EQ(entries[2].openedAt, 0u);
  EXPECT_EQ(entries[3].openedAt, ~uint64_t{0});
}

TEST(RecentFile, TheFirstTabSplitsALine) {
  EXPECT_EQ(PathsOf(ReadRecentOpens(u"1\tC:\\a\tb\n")), Paths{u"C:\\a\tb"});
}

TEST(RecentFile, APathCountsOnce) {
  EXPECT_EQ(PathsOf(ReadRecentOpens(u"1\tC:\\A\n2\tc:/a\n3\tC:\\b\n")), (Paths{u"C:\\A", u"C:\\b"}));
}

TEST(RecentFile, AHundredEntriesAreRead) {
  std::u16string text;
  for (char16_t unit = 0x4E00; unit < 0x4E00 + 150; ++unit)
    text += u"1\tC:\\" + std::u16string(1, unit) + u"\n";
  const auto entries = ReadRecentOpens(text);
  ASSERT_EQ(entries.size(), 100u);
  EXPECT_EQ(entries.back().path, u"C:\\\u4E63");
}

TEST(RecentFile, ALongLineComesInPieces) {
  const std::u16string longest = u"C:\\" + std::u16string(kLongestRecentLine - 6, u'x');
  EXPECT_EQ(PathsOf(ReadRecentOpens(u"1\t" + longest + u"\n2\tC:\\b\n")), (Paths{longest, u"C:\\b"}));
  const auto cut = ReadRecentOpens(u"1\t" + longest + u"yz\n2\tC:\\b\n");
  EXPECT_EQ(PathsOf(cut), (Paths{longest + u"y", u"C:\\b"})) << "the rest has no tab";
}

TEST(RecentFile, WhatNoReaderWouldTakeIsNotWritten) {
  EXPECT_EQ(RecentOpensText({{.path = u""},
                             {.path = u"C:\\a\n1\tC:\\forged"},
                             {.path = u"C:\\a\rb"},
                             {.path = u"C:\\" + std::u16string(4'094, u'x')},
                             {.openedAt = 1, .path = u"C:\\a"}}),
            u"1\tC:\\a\n");
}

}  // namespace
}  // namespace quilmark
