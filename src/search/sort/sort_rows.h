// The parts of a sort of a result set: rows that are there, their values, and keys to sort them by.
#pragma once

#include <atomic>
#include <optional>
#include <shared_mutex>
#include <span>
#include <vector>

#include "platform/cores.h"
#include "search/results/row_runs.h"
#include "search/sort/sort.h"
#include "search/sort/sort_key.h"

namespace quilmark {

using SortedRows = std::vector<MatchItem>;

// An entry for each row, with the keys that they point to.
struct KeyedRows {
  explicit KeyedRows(size_t count) : entries(count), keys(CoreCount()) {}

  KeyEntries entries;
  std::vector<SortKeys> keys;  // by worker
};

// Calls add(keys, number of the row, its record) for each row on several threads, with the volume's lock
// held shared; null for a record that is gone. False if the job went stale.
template <typename AddRow>
bool AddRowsOnCores(RowRun rows, const SortJob& job, KeyedRows& keyed, AddRow add) {
  constexpr size_t kRowsAPiece = 16 * kRowsARun;
  std::atomic<bool> isCurrent = true;
  OnCores(rows.size(), kRowsAPiece, [&](size_t worker, size_t first, size_t end) {
    size_t number = first;
    ForEachRun(rows.subspan(first, end - first), [&](RowRun run) {
      if (!IsCurrent(job.generation)) isCurrent = false;
      if (!isCurrent) return false;
      const VolumeIndex& volume = *run[0].volume;
      const std::shared_lock lock(volume.indexLock);
      PrefetchRecords(volume, run);
      for (const MatchItem& row : run) {
        const bool isThere = row.index < volume.records.size();
        add(keyed.keys[worker], number++, isThere ? &volume.records[row.index] : nullptr);
      }
      return true;
    });
  });
  return isCurrent;
}

// The held rows without those that are gone or have no volume.
SortedRows LiveRows(RowRun held);

// The rows that the disk must be asked about before a sort by size or date. Empty if the job went stale.
std::optional<SortedRows> MissingRows(RowRun rows, const SortJob& job);

// Whether the status line counts the missing rows while they are fetched.
bool ShowsFetchProgress(size_t missing, size_t rows);

// Rows by size or date, as far as known, after the totals of their folders have been brought up to date.
// Empty if the job went stale on the way.
SortedRows SortedByValue(RowRun rows, const SortJob& job);

// Of two rows with one text the first in the index goes first. `context`: the RowRun of all rows.
bool IsBeforeInIndex(const void* context, uint32_t a, uint32_t b);

// Rows by path, without building one. Empty optional where the rows' folders are no tree: a name with a
// backslash, a circle, more parents than a path has. No rows if the job went stale.
std::optional<SortedRows> SortedByPathTree(RowRun rows, const SortJob& job);

}  // namespace quilmark
