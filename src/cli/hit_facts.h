// Size and times of a hit, as the JSON form shows them.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "index/engine/search_engine.h"
#include "platform/clock.h"

namespace quilmark {

// What is known of a hit.
struct HitFacts {
  std::optional<uint64_t> size;        // bytes; of a folder: of all below it
  FileTime modified = 0, created = 0;  // 0: not known
};

// Whether the totals of folders were added up before: if not, a folder has no size.
enum class FolderTotals { kUnknown, kRead };

// Takes them from the attribute cache, else from the disk. What neither says is left empty. The caller
// holds no lock of a volume.
HitFacts FactsOf(const MatchItem& hit, FolderTotals totals);

// A moment as "2026-03-01T14:05:09.250Z".
std::string FormatUtc(FileTime time);

}  // namespace quilmark
