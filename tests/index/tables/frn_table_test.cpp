#include "index/tables/frn_table.h"

#include <gtest/gtest.h>

#include <map>
#include <random>

namespace quilmark {
namespace {

struct Table {
  RecordStore records;
  FrnTable table;

  uint32_t Add(uint64_t frn) {
    FileRecord record;
    record.frn = frn;
    const uint32_t index = records.push_back(record);
    SetIndexOf(table, records, frn, index);
    return index;
  }
  std::optional<int64_t> Find(uint64_t frn) const { return IndexOf(table, records, frn); }
};

constexpr uint64_t Frn(uint64_t sequence, uint64_t number) { return sequence << 48 | number; }

TEST(FrnTable, FindsWhatWasSet) {
  Table t;
  EXPECT_EQ(t.Add(Frn(1, 30)), 0u);
  EXPECT_EQ(t.Add(Frn(7, 31)), 1u);
  EXPECT_EQ(t.Find(Frn(1, 30)), 0);
  EXPECT_EQ(t.Find(Frn(7, 31)), 1);
  EXPECT_EQ(SizeOf(t.table), 2u);
}

TEST(FrnTable, OtherSequenceNumberIsAnotherFile) {
  Table t;
  t.Add(Frn(1, 30));
  EXPECT_FALSE(t.Find(Frn(2, 30)).has_value());
  EXPECT_FALSE(t.Find(30).has_value());
  t.Add(Frn(2, 30));
  EXPECT_EQ(t.Find(Frn(1, 30)), 0);
  EXPECT_EQ(t.Find(Frn(2, 30)), 1);
}

TEST(FrnTable, NumberBelowTheFirstIsFound) {
  Table t;
  t.Add(Frn(1, 5'000));
  t.Add(Frn(1, 7));
  EXPECT_EQ(t.Find(Frn(1, 7)), 1);
  EXPECT_FALSE(t.Find(Frn(1, 8)).has_value());
}

TEST(FrnTable, AbsurdNumberSizesNothing) {
  Table t;
  t.Add(Frn(1, 5));
  t.Add(Frn(1, 0xFFFF'FFFF'FFFF));
  EXPECT_EQ(t.Find(Frn(1, 0xFFFF'FFFF'FFFF)), 1);
  EXPECT_LT(MemoryOf(t.table), 100'000u);
}

TEST(FrnTable, RootWithoutRecordIsKnown) {
  Table t;
  SetIndexOf(t.table, t.records, 1, kRootWithoutRecord);
  t.Add(0x100000);
  EXPECT_EQ(t.Find(1), kRootWithoutRecord);
  EXPECT_EQ(t.Find(0x100000), 0);
}

TEST(FrnTable, ResetForgetsAll) {
  Table t;
  t.Add(Frn(1, 5));
  SetIndexOf(t.table, t.records, 1, kRootWithoutRecord);
  ResetFrnTable(t.table);
  EXPECT_EQ(SizeOf(t.table), 0u);
  EXPECT_FALSE(t.Find(1).has_value());
}

TEST(FrnTable, AgreesWithAMapOnRandomReferences) {
  std::mt19937 random(2);
  for (int round = 0; round < 20; ++round) {
    Table t;
    std::map<uint64_t, int64_t> reference;
    const uint64_t base = random() % 2 == 0 ? 0 : random();
    for (int i = 0; i < 3'000; ++i) {
      uint64_t number = base + random() % 4'000;
      if (random() % 100 == 0) number = random();
      const uint64_t frn = Frn(random() % 3, number);
      if (!reference.contains(frn)) reference[frn] = t.Add(frn);
      const uint64_t asked = Frn(random() % 3, base + random() % 4'000);
      const auto expected = reference.find(asked);
      ASSERT_EQ(t.Find(asked),
                expected == reference.end() ? std::nullopt : std::optional(expected->second));
    }
    for (const auto& [frn, index] : reference) ASSERT_EQ(t.Find(frn), index);
    ASSERT_EQ(SizeOf(t.table), reference.size());
  }
}

}  // namespace
}  // namespace quilmark
