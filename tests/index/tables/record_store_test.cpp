#include "index/tables/record_store.h"

#include <gtest/gtest.h>

namespace quilmark {
namespace {

constexpr uint32_t kMoreThanAChunk = RecordStore::kChunkRecords + 10;

TEST(RecordStore, FindsEachRecordByItsIndex) {
  RecordStore records;
  EXPECT_TRUE(records.empty());
  for (uint32_t i = 0; i < kMoreThanAChunk; ++i) EXPECT_EQ(records.push_back({.frn = i + 7}), i);
  EXPECT_EQ(records.size(), kMoreThanAChunk);
  for (uint32_t i = 0; i < kMoreThanAChunk; ++i) ASSERT_EQ(records[i].frn, i + 7) << i;
}

TEST(RecordStore, NeverMovesARecord) {
  RecordStore records;
  records.push_back({.frn = 1});
  const FileRecord* const first = &records[0];
  for (uint32_t i = 1; i < kMoreThanAChunk; ++i) records.push_back({});
  EXPECT_EQ(&records[0], first);
}

TEST(RecordStore, TakesMemoryByTheChunkAndGivesAllOfItBack) {
  RecordStore records;
  EXPECT_EQ(records.MemoryBytes(), 0u);
  records.ReserveOne();
  EXPECT_TRUE(records.empty());
  const size_t chunk = records.MemoryBytes();
  EXPECT_GE(chunk, RecordStore::kChunkRecords * sizeof(FileRecord));
  for (uint32_t i = 0; i < RecordStore::kChunkRecords; ++i) records.push_back({});
  EXPECT_EQ(records.MemoryBytes(), chunk);
  records.push_back({});
  EXPECT_EQ(records.MemoryBytes(), 2 * chunk);
  records.clear();
  EXPECT_TRUE(records.empty());
  EXPECT_EQ(records.MemoryBytes(), 0u);
}

}  // namespace
}  // namespace quilmark
