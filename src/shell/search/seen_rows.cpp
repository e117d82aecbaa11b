#include "shell/search/seen_rows.h"

#include <algorithm>

#include "search/results/glance.h"
#include "shell/search/search_view.h"

namespace quilmark {

bool SeenRows::HasBuild(const VolumeIndex* volume, uint64_t build) const {
  return std::find(builds.begin(), builds.end(), std::pair(volume, build)) != builds.end();
}

SeenRows SeeRows(const std::shared_ptr<const ResultSet>& set) {
  SeenRows seen{.set = set, .builds = {}};
  for (const VolumeIndex* volume : CopyVolumes(Engine())) {
    // A paint waits for no writer: a build says that it runs before the number changes.
    const uint64_t build = volume->builds;
    if (IsSearchable(*volume)) seen.builds.emplace_back(volume, build);
  }
  return seen;
}

void BeginChoice(SearchView& view) {
  const SeenRows& seen = view.source.Seen();
  if (view.chosenFrom.IsSameSet(seen)) return;
  ClearSelection(view.list.selection);
  view.chosenFrom = seen;
}

std::shared_ptr<const ResultSet> ChosenSet(const SearchView& view) {
  auto set = view.chosenFrom.set.lock();
  return set == ShownResults() ? set : nullptr;
}

}  // namespace quilmark
