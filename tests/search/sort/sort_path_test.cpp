#include <gtest/gtest.h>

#include "search/sort/sorted_rows.h"

namespace quilmark {
namespace {

TEST_F(SortedRowsTest, WithBackslashesInNamesAreThoseOfAPlainSort) {
  AddFolder(*volumes[0], u"a\\b", kRootFrnOfTests, 6'000);
  rows.push_back({volumes[0].get(), AddFile(*volumes[0], u"a", 6'000)});
  AddFiles(2'000);
  EXPECT_FALSE(IsTree());
  ExpectPlainOrder();
  rows.clear();
  rows.push_back({volumes[0].get(), AddFile(*volumes[0], u"a\\b\\c")});
  AddFiles(2'000);
  EXPECT_FALSE(IsTree());
  ExpectPlainOrder();
}

TEST_F(SortedRowsTest, InACircleAreThoseOfAPlainSort) {
  AddFolder(*volumes[1], u"a", 6'001, 6'000);
  AddFolder(*volumes[1], u"b", 6'000, 6'001);
  rows.push_back({volumes[1].get(), AddFile(*volumes[1], u"x", 6'001)});
  AddFiles(2'000);
  EXPECT_FALSE(IsTree());
  ExpectPlainOrder();
}

// A path has a hundred parents at most.
TEST_F(SortedRowsTest, DeepInATreeAreThoseOfAPlainSort) {
  for (const uint64_t depth : {99u, 100u, 101u, 150u}) {
    const uint64_t first = 10'000 * depth;
    uint64_t parent = kRootFrnOfTests;
    for (uint64_t frn = first; frn < first + depth; ++frn) {
      AddFolder(*volumes[2], FolderName(), parent, frn);
      parent = frn;
    }
    rows.clear();
    // The deepest one last: its folders are met one by one before.
    for (const uint64_t frn : {first + depth / 2, first + depth - 1}) {
      rows.push_back({volumes[2].get(), AddFile(*volumes[2], u"x", frn)});
    }
    EXPECT_EQ(IsTree(), depth <= 100) << depth;
    ExpectPlainOrder();
  }
}

}  // namespace
}  // namespace quilmark
