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

// A row of a sort by size or date, with its values beside it: comparing takes no lock.
struct SortRow {
  VolumeIndex* volume = nullptr;
  uint32_t index = 0;
  bool isDirectory = false;
  bool hasValue = false;
  int64_t size = 0;
  FileTime modified = 0;
  FileTime created = 0;
};
static_assert(sizeof(SortRow) == 40, "one a row of a sort");

// Whether `a` stands before `b` in the order of column 2, 3 or 4. A strict order of rows that differ in
// volume or index.
bool StandsBefore(const SortRow& a, const SortRow& b, SetOrder order);

// An entry for each row, with the keys that they point to.
struct KeyedRows {
  explicit KeyedRows(size_t count) : entries(count), keys(CoreCount()) {}

  KeyEntries entries;
  std::vector<SortKeys> keys;  // by worker
};

// Calls add(keys, number of the row, its record) for each row on several threads, with the volume's lock
// held shared; null for a record that is gone. False if the ticket went stale.
template <typename AddRow>
bool AddRowsOnCores(RowRun rows, const Ticket& ticket, KeyedRows& keyed, AddRow add) {
  constexpr size_t kRowsAPiece = 16 * kRowsARun;
  std::atomic<bool> isCurrent = true;
  OnCores(rows.size(), kRowsAPiece, [&](size_t worker, size_t first, size_t end) {
    size_t number = first;
    ForEachRun(rows.subspan(first, end - first), [&](RowRun run) {
      if (!ticket.IsCurrent()) isCurrent = false;
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

// Those of the rows that have a volume, and whose files are there.
ResultSet LiveRows(RowRun rows);

// The rows that the disk must be asked about before a sort by size or date. Empty once the ticket is
// stale.
[[nodiscard]] std::optional<ResultSet> MissingRows(RowRun rows, int column, const Ticket& ticket);

// Whether the missing rows are counted for the user while they are fetched.
bool ShowsFetchProgress(size_t missing, size_t rows);

// All four: the rows in order, or empty once the ticket is stale.

// By name (column 1) or path (column 5), ignoring case.
[[nodiscard]] std::optional<ResultSet> SortedByText(RowRun rows, SetOrder order, const Ticket& ticket);

// By size or date, as far as known, after the totals of their folders have been brought up to date.
[[nodiscard]] std::optional<ResultSet> SortedByValue(RowRun rows, SetOrder order, const Ticket& ticket);

// By path, without building one. Empty as well where the rows' folders are no tree: a name with a
// backslash, a circle, more parents than a path has.
[[nodiscard]] std::optional<ResultSet> SortedByPathTree(RowRun rows, bool ascending,
                                                        const Ticket& ticket);

// By path, each of them built.
[[nodiscard]] std::optional<ResultSet> SortedByWholePath(RowRun rows, bool ascending,
                                                         const Ticket& ticket);

// Of two rows with one text the first in the index goes first. `context`: the RowRun of all rows.
bool IsBeforeInIndex(const void* context, uint32_t a, uint32_t b);

}  // namespace quilmark
