// The way of hits from the search to the output: filtered, with the totals of folders, in an order.
#pragma once

#include <memory>
#include <optional>

#include "cli/filter_options.h"
#include "cli/options.h"
#include "search/results/search_session.h"

namespace quilmark {

// The filter that the options ask for. `category` is an index into `table`; 0 means all.
FilterContext MakeHitFilter(const HitFilters& filters, const FilterTable& table, size_t category);

// What is done to the hits of a search before they are written.
struct Narrowing {
  FilterContext filter;            // keeps all hits where the options name no filter
  bool readsTotals = false;        // the sizes of all files below folders that were found are read
  std::optional<SortOrder> order;  // empty: that of the search
};

// The hits that are left, in their order. Reads the disk where sizes or dates are asked for. Null if the
// user interrupted.
std::shared_ptr<const ResultSet> NarrowResults(std::shared_ptr<const ResultSet> results,
                                               const Narrowing& narrowing);

}  // namespace quilmark
