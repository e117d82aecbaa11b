#include <gtest/gtest.h>

#include "search/sort/sorted_rows.h"

namespace quilmark {
namespace {

TEST_F(SortedRowsTest, AreThoseOfAPlainSort) {
  AddFiles(30'000);
  ASSERT_TRUE(IsTree());
  ExpectPlainOrder();
}

TEST_F(SortedRowsTest, OfOneLargeFolderAreThoseOfAPlainSort) {
  for (int i = 0; i < 60'000; ++i) AddRow(*volumes[0], 5'007);
  AddFiles(100);
  ASSERT_TRUE(IsTree());
  ExpectPlainOrder();
}

TEST_F(SortedRowsTest, AreNoneWhenStale) {
  AddFiles(1'000);
  for (const int column : {kColumnName, kColumnOfPath}) {
    EXPECT_FALSE(SortedByText(rows, {column, true}, StaleTicket()));
  }
}

}  // namespace
}  // namespace quilmark
