#include "index/tables/frn_table.h"

#include <algorithm>

#include "platform/file_reference.h"

namespace quilmark {

namespace {

// A volume may have many more record numbers than records in use, but a number from a damaged volume
// must not size the array.
uint64_t MostSlots(const RecordStore& records) {
  return (uint64_t{1} << 20) + 16 * static_cast<uint64_t>(records.size());
}

// The slot of `frn`, made if it is in reach; null if it is not.
uint32_t* ReachSlot(FrnTable& table, const RecordStore& records, uint64_t frn) {
  const uint64_t number = RecordNumberOf(frn);
  if (table.slots.empty()) table.slotBase = number;
  if (number < table.slotBase || number - table.slotBase >= MostSlots(records)) return nullptr;
  const size_t slot = number - table.slotBase;
  if (slot >= table.slots.size()) {
    // A quarter in reserve: doubling would cost a record more than its slot is worth.
    if (slot >= table.slots.capacity()) table.slots.reserve(slot + slot / 4 + 1'024);
    table.slots.resize(slot + 1);
  }
  return &table.slots[slot];
}

}  // namespace

void SetIndexOf(FrnTable& table, const RecordStore& records, uint64_t frn, int64_t index) {
  const bool isKnownElsewhere = !table.others.empty() && table.others.contains(frn);
  if (index >= 0 && !isKnownElsewhere) {
    uint32_t* const slot = ReachSlot(table, records, frn);
    if (slot != nullptr && (*slot == 0 || records[*slot - 1].frn == frn)) {
      *slot = static_cast<uint32_t>(index) + 1;
      return;
    }
  }
  table.others.insert_or_assign(frn, index);
}

void FillFrnTable(FrnTable& table, const RecordStore& records) {
  for (uint32_t index = 0; index < records.size(); ++index) {
    SetIndexOf(table, records, records[index].frn, index);
  }
}

std::optional<int64_t> IndexOf(const FrnTable& table, const RecordStore& records, uint64_t frn) {
  const uint64_t slot = RecordNumberOf(frn) - table.slotBase;  // wraps far above any size below the base
  if (slot < table.slots.size() && table.slots[slot] != 0) {
    const uint32_t index = table.slots[slot] - 1;
    if (records[index].frn == frn) return index;
  }
  if (table.others.empty()) return std::nullopt;
  const auto found = table.others.find(frn);
  if (found == table.others.end()) return std::nullopt;
  return found->second;
}

size_t SizeOf(const FrnTable& table) {
  const auto taken =
      std::count_if(table.slots.begin(), table.slots.end(), [](uint32_t slot) { return slot != 0; });
  return static_cast<size_t>(taken) + table.others.size();
}

void ResetFrnTable(FrnTable& table) { table = FrnTable(); }

size_t MemoryOf(const FrnTable& table) {
  return table.slots.capacity() * sizeof(uint32_t) +
         table.others.bucket_count() * (sizeof(uint64_t) + sizeof(int64_t) + 1);
}

}  // namespace quilmark
