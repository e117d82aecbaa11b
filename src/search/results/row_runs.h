// Rows of a result set in runs of one volume: a pass over a million rows takes a lock once a run, and
// holds it for some microseconds.
#pragma once

#include <cstddef>
#include <span>

#include "index/engine/search_engine.h"

namespace quilmark {

inline constexpr size_t kRowsARun = 256;

using RowRun = std::span<const MatchItem>;

// The longest run at the front of `rows`, of at most kRowsARun; empty for no rows.
inline RowRun FirstRun(RowRun rows) {
  size_t count = 0;
  while (count < rows.size() && count < kRowsARun && rows[count].volume == rows[0].volume) ++count;
  return rows.first(count);
}

// Calls `work` with each run in order, until it returns false; false then.
template <typename Work>
bool ForEachRun(RowRun rows, Work work) {
  while (!rows.empty()) {
    const RowRun run = FirstRun(rows);
    if (!work(run)) return false;
    rows = rows.subspan(run.size());
  }
  return true;
}

// Asks for the records of a run ahead of their reader: rows lie scattered over the index. indexLock
// held.
inline void PrefetchRecords(const VolumeIndex& volume, RowRun run) {
  for (const MatchItem& row : run) {
    if (row.index < volume.records.size()) __builtin_prefetch(&volume.records[row.index]);
  }
}

}  // namespace quilmark
