// Prints hits, millions of them without a pause.
#pragma once

#include <cstdint>
#include <cstdio>
#include <optional>
#include <string>
#include <string_view>

#include "cli/hit_facts.h"
#include "search/results/search_session.h"

namespace quilmark {

struct HitFormat {
  bool json = false;
  bool drivePaths = false;
  char end = '\n';       // of a line
  bool isShown = false;  // on a terminal, which acts on control characters: "?" stands for each
  bool facts = false;    // JSON shows sizes and times
  FolderTotals totals = FolderTotals::kUnknown;
};

enum class WriteOutcome {
  kDone,
  kStopped,  // the reader of the stream went away, or the user interrupted: nothing to complain of
  kFailed,
};

// Writes the first `limit` hits to `stream`, a line each, down to the system.
WriteOutcome WriteHits(const ResultSet& results, std::optional<uint64_t> limit, HitFormat format,
                       std::FILE* stream);

// Writes `text` down to the system.
WriteOutcome WriteText(std::string_view text, std::FILE* stream);

// One line without its end. `path` is a path of the index. `facts` are shown if format.facts.
std::string FormatHit(std::u16string_view path, bool isDirectory, HitFormat format,
                      const HitFacts& facts = {});

}  // namespace quilmark
