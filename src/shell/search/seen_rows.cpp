#include "shell/search/seen_rows.h"

#include <algorithm>
#include <shared_mutex>

#include "search/results/glance.h"
#include "shell/search/search_view.h"

namespace quilmark {

bool SeenRows::HasBuild(const VolumeIndex* volume, uint64_t build) const {
  return std::find(builds.begin(), builds.end(), std::pair(volume, build)) != builds.end();
}

SeenRows SeeRows(const std::shared_ptr<const ResultSet>& set) {
  SeenRows seen{.set = set, .builds = {}};
  for (const VolumeIndex* volume : CopyVolumes(Engine())) {
    if (!IsSearchable(*volume)) continue;
    const std::shared_lock lock(volume->indexLock);
    seen.builds.emplace_back(volume, volume->builds);
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
