// Sorting of the held results by a column of the list, on a background job.
#pragma once

#include <cstdint>
#include <vector>

#include "search/results/search_state.h"

namespace quilmark {

inline constexpr int kColumnName = 1, kColumnSize = 2, kColumnModified = 3, kColumnCreated = 4,
                     kColumnOfPath = 5;

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

// Whether `a` stands before `b` in the order of column 2, 3 or 4. A strict order of rows that differ in
// volume or index.
bool StandsBefore(const SortRow& a, const SortRow& b, int column, bool ascending);

struct SortJob {
  uint64_t generation = 0;
  int column = 0;
  bool reverse = false;  // the held order the other way round is the answer
  bool ascending = true;
};

enum class Direction { kByClick, kKeep };

// Starts a sort by a column, which ends a running search. By click the same column again turns around,
// and another one begins ascending, but sizes with the largest. Column 0 is ignored. Interface thread.
void DoSortAsync(int column, Direction direction);

// The work of one sort, on the calling thread.
void RunSort(const SortJob& job);

// Rows in the order of their names (column 1) or paths (column 5), ignoring case. Empty if the job went
// stale on the way.
std::vector<MatchItem> SortedByText(const std::vector<MatchItem>& rows, const SortJob& job);

}  // namespace quilmark
