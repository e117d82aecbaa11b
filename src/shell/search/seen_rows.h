// Which rows the user saw when they were chosen. Jobs replace the rows of the list at any moment, and a
// volume that is built anew gives the numbers of its records to other files: a number alone would have
// an action done to a file that nobody has chosen. Interface thread.
#pragma once

#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

#include "index/engine/search_engine.h"
#include "search/results/search_session.h"

namespace quilmark {

struct SearchView;

// A set of rows as it was seen first. Default: none was seen.
struct SeenRows {
  std::weak_ptr<const ResultSet> set;
  std::vector<std::pair<const VolumeIndex*, uint64_t>> builds;  // of each volume that had rows to show

  // True if both are of one set, or of none.
  bool IsSameSet(const SeenRows& other) const {
    return !set.owner_before(other.set) && !other.set.owner_before(set);
  }

  // True if the volume had that build when the rows were seen.
  bool HasBuild(const VolumeIndex* volume, uint64_t build) const;
};

// The set as it is seen now. Waits for nobody.
SeenRows SeeRows(const std::shared_ptr<const ResultSet>& set);

// Before rows are chosen: those that were chosen in another set than the one that is seen are not chosen
// any more.
void BeginChoice(SearchView& view);

// The set that the chosen rows are numbers of, if the list still shows it; else null.
[[nodiscard]] std::shared_ptr<const ResultSet> ChosenSet(const SearchView& view);

}  // namespace quilmark
