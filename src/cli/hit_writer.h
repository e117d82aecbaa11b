// Writes hits to a stream, millions of them in large blocks.
#pragma once

#include <cstdint>
#include <cstdio>
#include <optional>
#include <string>
#include <string_view>

#include "cli/hit_facts.h"
#include "search/results/search_session.h"

namespace quilmark {

// How hits are written.
struct HitFormat {
  bool json = false;
  bool drivePaths = false;
  char end = '\n';       // of a line
  bool isShown = false;  // on a terminal, which acts on control characters: "?" stands for each
  bool facts = false;    // JSON shows sizes and times
  FolderTotals totals = FolderTotals::kUnknown;
};

// What came of writing.
enum class [[nodiscard]] WriteOutcome{
    kDone,
    kStopped,  // the reader of the stream went away, or the user interrupted: no error is told
    kFailed,   // the stream takes no more, such as a full disk
};

// Writes the first `limit` hits, a line each, and flushes the stream. An empty limit writes all. Takes
// the index lock of each volume shared; the caller holds none.
WriteOutcome WriteHits(const ResultSet& results, std::optional<uint64_t> limit, HitFormat format,
                       std::FILE* stream);

// Writes `text` and flushes the stream.
WriteOutcome WriteText(std::string_view text, std::FILE* stream);

// One line of output without its end. `path` is a path of the index. `facts` are shown if format.facts
// says so.
std::string FormatHit(std::u16string_view path, bool isDirectory, HitFormat format,
                      const HitFacts& facts = {});

}  // namespace quilmark
