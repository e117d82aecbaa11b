// Prints hits, millions of them without a pause.
#pragma once

#include <cstdint>
#include <cstdio>
#include <optional>
#include <string>

#include "search/search_state.h"

namespace quilmark {

struct HitFormat {
  bool json = false;
  bool drivePaths = false;
};

// Writes the first `limit` hits to `stream`, a line each. False if the reader of the stream went away.
bool WriteHits(const ResultSet& results, std::optional<uint64_t> limit, HitFormat format,
               std::FILE* stream);

// One line without its end. `path` is a path of the index.
std::string FormatHit(std::u16string_view path, bool isDirectory, HitFormat format);

}  // namespace quilmark
