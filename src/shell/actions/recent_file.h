// recent.ini: the files that were opened last, a line each, the newest first.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "shell/actions/comparable_path.h"

namespace quilmark {

struct VolumeIndex;

// More are forgotten, the oldest first.
inline constexpr size_t kMostRecentOpens = 100;

// Units of the longest line that a reader takes, its line end included; a longer one comes in pieces.
inline constexpr size_t kLongestRecentLine = 4'095;

// One file that was opened.
struct RecentOpenEntry {
  VolumeIndex* volume = nullptr;  // null: not known, as after a start
  uint32_t record = 0;            // of the file in that volume
  uint64_t build = 0;             // VolumeIndex::builds when the record was seen
  uint64_t openedAt = 0;          // milliseconds since some start of the system; kept, never compared
  std::u16string path;
};

// The entries of a file's text, at most kMostRecentOpens. A line without a tab and a path is passed
// over, as is a path that came before; a number that is none counts as 0.
std::vector<RecentOpenEntry> ReadRecentOpens(std::u16string_view text);

// The text of the file for `entries`. One without a path is left out, and one that no reader would take
// as it is: with a line end in it, or too long.
std::u16string RecentOpensText(const std::vector<RecentOpenEntry>& entries);

}  // namespace quilmark
