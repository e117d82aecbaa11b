#include <gtest/gtest.h>

#include <random>

#include "search/sort/sorted_rows.h"

namespace quilmark {
namespace {

TEST_F(SortedRowsTest, BySizeAndDateAreThoseOfAPlainSort) {
  AddFiles(30'000);
  AddAttributes();
  for (const int column : {kColumnSize, kColumnModified, kColumnCreated}) {
    for (const bool ascending : {true, false}) {
      const auto sorted = SortedByValue(rows, {column, ascending}, Ticket::Unlimited());
      ASSERT_EQ(*sorted, PlainValueSort(column, ascending)) << column << ascending;
    }
  }
}

TEST_F(SortedRowsTest, LeaveOutWhatIsGoneAndAskForWhatIsMissing) {
  AddFiles(3'000);
  AddAttributes();
  std::vector<MatchItem> live;
  for (const MatchItem& row : rows) {
    if (row.index < row.volume->records.size() && !row.volume->records[row.index].deleted)
      live.push_back(row);
  }
  ASSERT_LT(live.size(), rows.size());
  EXPECT_EQ(LiveRows(rows), live);
  for (const int column : {kColumnSize, kColumnModified, kColumnCreated}) {
    std::vector<MatchItem> expected;
    for (const MatchItem& row : live) {
      const FileRecord& record = row.volume->records[row.index];
      const auto entry = row.volume->attrs.find(record.frn);
      const bool isHeld = entry != row.volume->attrs.end() && entry->second.valid;
      const bool isKnown = column == kColumnSize
                               ? record.isDirectory || PlainSize(*row.volume, record.frn).has_value()
                               : isHeld && (column == kColumnModified ? entry->second.modified
                                                                      : entry->second.created) != 0;
      if (!isKnown) expected.push_back(row);
    }
    ASSERT_FALSE(expected.empty());
    EXPECT_EQ(MissingRows(rows, column, Ticket::Unlimited()), expected);
  }
  EXPECT_FALSE(MissingRows(rows, kColumnSize, StaleTicket()));
}

SortRow RandomRow(std::mt19937& random, VolumeIndex* volumes) {
  const auto few = [&random](int count) {
    return static_cast<int>(random() % static_cast<unsigned>(count));
  };
  return {.volume = volumes + few(2),
          .index = static_cast<uint32_t>(few(4)),
          .isDirectory = few(3) == 0,
          .hasValue = few(4) != 0,
          .size = few(4) - 1,
          .modified = static_cast<FileTime>(few(3)),
          .created = static_cast<FileTime>(few(3))};
}

bool IsSameRow(const SortRow& a, const SortRow& b) { return a.volume == b.volume && a.index == b.index; }

TEST(StandsBefore, IsAStrictWeakOrder) {
  VolumeIndex volumes[2];
  std::mt19937 random(7);
  for (int round = 0; round < 200'000; ++round) {
    const SortRow a = RandomRow(random, volumes), b = RandomRow(random, volumes),
                  c = RandomRow(random, volumes);
    for (const int column : {kColumnSize, kColumnModified, kColumnCreated}) {
      for (const bool ascending : {false, true}) {
        const auto before = [&](const SortRow& x, const SortRow& y) {
          return StandsBefore(x, y, {column, ascending});
        };
        ASSERT_FALSE(before(a, a));
        ASSERT_FALSE(before(a, b) && before(b, a));
        const bool isChain = before(a, b) && before(b, c);
        ASSERT_TRUE(!isChain || before(a, c));
        ASSERT_TRUE(IsSameRow(a, b) || before(a, b) || before(b, a));
      }
    }
  }
}

}  // namespace
}  // namespace quilmark
