// A content query from its candidates to its hits: what the search calls for "s:...".
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "content/run/content_run.h"
#include "search/filter/filters.h"
#include "search/results/search_session.h"

namespace quilmark {

// What the user has chosen for content searches, as it is when one begins.
struct ContentSettings {
  FilterSettings
      filter;  // of the filter bar: size and time narrow the candidates, the category does not
  int contentSearchThreads = 0;  // as stored; 0: chosen by the program
  MatchPlan plan;                // its groups are filled in by the search
};

// Installs the content search as SearchHooks::searchContent. `settings` is called at the start of each
// content search, on its job. Before the first search.
void InstallContentSearch(std::function<ContentSettings()> settings);

// Runs one content query on the calling thread, a job's. Its hits, which are not to be published once
// the job is stale. Posts texts of its progress, and partial results.
[[nodiscard]] std::shared_ptr<ResultSet> SearchContent(const SearchJob& job, const ContentQuery& query,
                                                       const SearchScope& scope,
                                                       ContentSettings settings);

// The line of the metric log for a search that has ended: files looked at, hits, and what could not be
// looked at, by reason.
std::u16string ContentMetric(const ContentRun& run);

}  // namespace quilmark
