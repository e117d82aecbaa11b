#include "shell/search/row_set.h"

#include <gtest/gtest.h>

#include <random>
#include <set>

namespace quilmark {
namespace {

std::set<uint64_t> RowsOf(const RowSet& set) {
  std::set<uint64_t> rows;
  for (const auto& [first, end] : set.Stretches()) {
    for (uint64_t row = first; row < end; ++row) rows.insert(row);
  }
  return rows;
}

TEST(RowSet, AgreesWithAPlainSet) {
  std::mt19937 random(11);
  RowSet set;
  std::set<uint64_t> plain;
  for (int step = 0; step < 20'000; ++step) {
    const uint64_t row = random() % 64, last = row + random() % 20;
    switch (random() % 16) {
      case 0:
        set.clear();
        plain.clear();
        break;
      case 1:
        set.assign(row, last);
        plain.clear();
        for (uint64_t i = row; i <= last; ++i) plain.insert(i);
        break;
      case 2:
      case 3:
      case 4:
      case 5:
      case 6:
        EXPECT_EQ(set.erase(row), plain.erase(row) == 1);
        break;
      default:
        set.insert(row);
        plain.insert(row);
    }
    ASSERT_EQ(RowsOf(set), plain);
    ASSERT_EQ(set.size(), plain.size());
    ASSERT_EQ(set.contains(row), plain.contains(row));
  }
}

TEST(RowSet, NeverKeepsStretchesThatTouch) {
  RowSet set;
  for (const uint64_t row : {1u, 3u, 5u, 4u, 2u}) set.insert(row);
  EXPECT_EQ(set.Stretches().size(), 1u);
}

TEST(RowSet, HoldsABillionRowsInOneStretch) {
  RowSet set;
  set.assign(0, 999'999'999);
  EXPECT_EQ(set.size(), 1'000'000'000u);
  EXPECT_TRUE(set.erase(500'000'000));
  EXPECT_EQ(set.Stretches().size(), 2u);
  EXPECT_FALSE(set.contains(500'000'000));
  EXPECT_TRUE(set.contains(999'999'999));
}

}  // namespace
}  // namespace quilmark
