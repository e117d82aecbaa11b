// The way of hits from the search to the output: filtered, with the totals of folders, in an order.
#pragma once

#include <memory>
#include <optional>

#include "cli/filter_options.h"
#include "cli/options.h"
#include "search/results/search_session.h"

namespace quilmark {

// The test of each hit. `category` is an index into `table`: 0 means all.
FilterContext MakeHitFilter(const HitFilters& filters, const FilterTable& table, size_t category);

struct Narrowing {
  FilterContext filter;            // may be off
  bool readsTotals = false;        // sizes of all files below folders that are hit
  std::optional<SortOrder> order;  // empty: that of the search
};

// The hits that are left, in their order. Null if the user interrupted.
std::shared_ptr<const ResultSet> NarrowResults(std::shared_ptr<const ResultSet> results,
                                               const Narrowing& narrowing);

}  // namespace quilmark
