// The walk over an archive's entries, wherever its bytes are.
#pragma once

#include <string>
#include <vector>

#include "content/archive/scratch.h"
#include "content/archive/text_match.h"
#include "content/match/file_match.h"
#include "content/match/work_check.h"
#include "platform/byte_source.h"

namespace quilmark {

// What an archive is asked. Made once a search, and never changed afterwards.
struct ArchiveQuery {
  ArchiveTerms terms;
  std::vector<std::string> innerPatterns;  // of entries, lower-case UTF-8; empty ones match nothing
};

// Whether an entry that matches a pattern holds a group's terms: kHit, kMiss, kStale, or kNoArchive
// where the directory cannot be read. Entries that are encrypted, damaged, empty or above kLargestEntry
// are passed over. What several entries share of the archive's bytes is unpacked once. Without groups or
// patterns a miss, and nothing is read.
[[nodiscard]] FileMatch MatchArchive(ByteSource& source, const ArchiveQuery& query,
                                     const WorkCheck& check, ArchiveScratch& scratch);

}  // namespace quilmark
