#include "cli/hit_facts.h"

#include <chrono>
#include <cstdio>

#include "search/attributes/attr_cache.h"
#include "search/attributes/folder_sizes.h"

namespace quilmark {

namespace {

std::optional<uint64_t> SizeOf(const MatchItem& hit, const RecordKind& kind, const AttrEntry& entry,
                               FolderTotals totals) {
  if (kind.isDirectory) {
    if (totals == FolderTotals::kUnknown) return std::nullopt;
    // A folder without a byte below it has no total.
    return GetFolderSize(*hit.volume, kind.frn, IfDirty::kLeave).value_or(0);
  }
  // An entry of no bytes and no dates may be that of a file that could not be read.
  const bool isRead = entry.modified != 0 || entry.created != 0 || entry.size > 0;
  if (isRead) return static_cast<uint64_t>(entry.size);
  if (const auto size = LookupMftSize(*hit.volume, kind.frn)) return size->logical;
  return std::nullopt;
}

}  // namespace

HitFacts FactsOf(const MatchItem& hit, FolderTotals totals) {
  const auto kind = KindOfLocked(*hit.volume, hit.index);
  if (!kind) return {};
  AttrEntry entry;
  EnsureFileAttributes(hit.volume, hit.index, entry, Insist::kOnDisk);
  return {
      .size = SizeOf(hit, *kind, entry, totals), .modified = entry.modified, .created = entry.created};
}

std::string FormatUtc(FileTime time) {
  using namespace std::chrono;
  const auto ticks = static_cast<int64_t>(time) - static_cast<int64_t>(kFileTimeOfUnixEpoch);
  const sys_time<milliseconds> moment(
      floor<milliseconds>(duration<int64_t, std::ratio<1, 10'000'000>>(ticks)));
  const auto midnight = floor<days>(moment);
  const year_month_day day(midnight);
  const hh_mm_ss clock(moment - midnight);
  char text[48];
  std::snprintf(text, sizeof text, "%04d-%02u-%02uT%02d:%02d:%02d.%03dZ", static_cast<int>(day.year()),
                static_cast<unsigned>(day.month()), static_cast<unsigned>(day.day()),
                static_cast<int>(clock.hours().count()), static_cast<int>(clock.minutes().count()),
                static_cast<int>(clock.seconds().count()), static_cast<int>(clock.subseconds().count()));
  return text;
}

}  // namespace quilmark
