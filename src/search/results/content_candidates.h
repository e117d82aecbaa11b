// Which files a content query opens: those of the index with one of its extensions.
#pragma once

#include <optional>

#include "search/results/search_session.h"

namespace quilmark {

// The files in scope whose name ends with one of query.Exts, in the order of the index. A volume that is
// lost, being built or written to is left out. Empty once the job is stale. Takes the index lock of each
// volume shared; the caller holds none.
[[nodiscard]] std::optional<ResultSet> CollectContentCandidates(const SearchJob& job,
                                                                const ContentQuery& query,
                                                                const SearchScope& scope);

}  // namespace quilmark
