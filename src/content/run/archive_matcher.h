// The archives of a content search, as its workers match them.
#pragma once

#include "content/run/file_matcher.h"

namespace quilmark {

// A matcher of ZIP archives with what it reads them with, for one worker. `plan` outlives it.
[[nodiscard]] ArchiveMatcher MakeZipMatcher(const MatchPlan& plan);

}  // namespace quilmark
