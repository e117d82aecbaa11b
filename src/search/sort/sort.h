// Sorting of rows by a column of the list.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

#include "search/results/columns.h"
#include "search/results/search_session.h"

namespace quilmark {

// What a long sort does on its way, for whoever waits. Called on threads of the sort.
struct SortSteps {
  // Rows by what is known of their sizes or dates, before the disk is asked for the rest. False ends the
  // sort. An empty one spares the order.
  std::function<bool(ResultSet known)> showKnown;
  // Now and then while the disk is asked about `total` rows, where they are many.
  std::function<void(size_t done, size_t total)> report;
};

struct SortedSet {
  ResultSet rows;
  bool hasAskedDisk = false;
  uint64_t askedMs = 0;  // how long that took
};

// Those of `rows` whose files are there, by `order`. Empty once the ticket is stale. Publishes nothing.
// A background thread's work: it uses several more, and may wait for the disk.
[[nodiscard]] std::optional<SortedSet> SortRows(std::shared_ptr<const ResultSet> rows, SetOrder order,
                                                const Ticket& ticket, const SortSteps& steps = {});

// One sort of the held results: all that it was started with.
struct SortJob {
  Ticket ticket;
  SetOrder order;
  bool reverse = false;  // the held rows the other way round are the answer
  std::shared_ptr<const ResultSet> rows;
};

enum class Direction { kByClick, kKeep };

// Starts a sort of the held results by a column, which ends a running search. By click the same column
// again turns around, and another one begins ascending, but sizes with the largest. Column 0 is ignored.
// Interface thread.
void DoSortAsync(int column, Direction direction);

// The work of one sort, on the calling thread. Publishes the rows, twice where the disk had to be asked,
// and leaves a line in the metrics log.
void RunSort(SortJob job);

}  // namespace quilmark
