// From file reference number to the position of its record.
//
// Record numbers of a volume are dense, so the common case is one 32-bit slot in an array by record
// number; the record itself says whether the sequence number agrees. A reference whose slot is taken by
// another sequence number, or whose number is far above the count of records, goes to an ordinary hash
// map.
#pragma once

#include <boost/unordered/unordered_flat_map.hpp>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "index/tables/file_record.h"
#include "index/tables/record_store.h"

namespace quilmark {

// The value of the reference that leads to the root of a walked volume, which has no record.
inline constexpr int64_t kRootWithoutRecord = -1;

// Guarded by the volume's indexLock, as the records are.
struct FrnTable {
  std::vector<uint32_t> slots;  // by record number less slotBase: index + 1, or 0
  uint64_t slotBase = 0;
  boost::unordered_flat_map<uint64_t, int64_t> others;  // values of references that have no slot
};
static_assert(sizeof(decltype(FrnTable::slots)::value_type) == 4, "four bytes a record number");

// Sets or replaces the value of `frn`, an index into `records` or kRootWithoutRecord. For an index the
// record there has this frn already. std::bad_alloc where memory runs out.
void SetIndexOf(FrnTable& table, const RecordStore& records, uint64_t frn, int64_t index);

// Sets the value of every record's frn to its index. The table is empty before. Of records that share a
// reference the last one keeps it. std::bad_alloc where memory runs out.
void FillFrnTable(FrnTable& table, const RecordStore& records);

// The value of `frn`, an index into `records` or kRootWithoutRecord; empty if it has none.
[[nodiscard]] std::optional<int64_t> IndexOf(const FrnTable& table, const RecordStore& records,
                                             uint64_t frn);

// How many references have a value. Counts the slots: for tests and figures.
size_t SizeOf(const FrnTable& table);
// Takes all values out and frees their memory.
void ResetFrnTable(FrnTable& table);
// Bytes taken from the heap.
size_t MemoryOf(const FrnTable& table);

}  // namespace quilmark
