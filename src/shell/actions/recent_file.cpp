#include "shell/actions/recent_file.h"

#include <limits>
#include <set>
#include <utility>

#include "platform/format.h"
#include "platform/text.h"
#include "platform/text_file.h"

namespace quilmark {

namespace {

// Digits up to the first unit that is none; clamped.
uint64_t ParseTicks(std::u16string_view text) {
  constexpr uint64_t kMost = std::numeric_limits<uint64_t>::max();
  uint64_t number = 0;
  for (const char16_t unit : text) {
    if (unit < u'0' || unit > u'9') break;
    const uint64_t digit = unit - u'0';
    if (number > (kMost - digit) / 10) return kMost;
    number = number * 10 + digit;
  }
  return number;
}

std::u16string LineOf(const RecentOpenEntry& entry) {
  return FormatText(u"%llu\t%ls\n", entry.openedAt, entry.path);
}

bool IsReadable(const RecentOpenEntry& entry, std::u16string_view line) {
  return line.size() <= kLongestRecentLine && entry.path.find_first_of(u"\r\n") == std::u16string::npos;
}

}  // namespace

std::vector<RecentOpenEntry> ReadRecentOpens(std::u16string_view text) {
  std::vector<RecentOpenEntry> entries;
  std::set<std::u16string> seen;
  TextLines lines{text, 0, kLongestRecentLine};
  while (entries.size() < kMostRecentOpens) {
    const auto line = NextLine(lines);
    if (!line) break;
    const std::u16string_view trimmed = TrimText(*line);
    const size_t tab = trimmed.find(u'\t');
    if (tab == std::u16string_view::npos) continue;
    std::u16string path(trimmed.substr(tab + 1));
    if (path.empty() || !seen.insert(ComparablePath(path)).second) continue;
    entries.push_back({.openedAt = ParseTicks(trimmed.substr(0, tab)), .path = std::move(path)});
  }
  return entries;
}

std::u16string RecentOpensText(const std::vector<RecentOpenEntry>& entries) {
  std::u16string text;
  for (const RecentOpenEntry& entry : entries) {
    const std::u16string line = LineOf(entry);
    if (!entry.path.empty() && IsReadable(entry, line)) text += line;
  }
  return text;
}

}  // namespace quilmark
