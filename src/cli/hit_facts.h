// Size and times of a hit, as the JSON form shows them.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "index/engine/search_engine.h"
#include "platform/clock.h"

namespace quilmark {

struct HitFacts {
  std::optional<uint64_t> size;        // bytes; of a folder: of all below it
  FileTime modified = 0, created = 0;  // 0: not known
};

enum class FolderTotals { kUnknown, kRead };

// From the attribute cache, else from the disk. No lock held.
HitFacts FactsOf(const MatchItem& hit, FolderTotals totals);

// "2026-03-01T14:05:09.250Z".
std::string FormatUtc(FileTime time);

}  // namespace quilmark
