// Narrowing of the held results by category, size and time, without searching again.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "search/filter/filter_categories.h"
#include "search/results/search_session.h"

namespace quilmark {

inline constexpr uint32_t WM_FILTER_RESULTS = 1028;

enum SizePresetValue { kAnySize, kBelow1MB, k1To100MB, kAbove100MB, kCustomSize };
enum TimePresetValue { kAnyTime, kToday, k7Days, k30Days, kCustomTime };

// What the filter bar says.
struct FilterSettings {
  int category = 0;  // index into the table
  int sizePreset = kAnySize;
  int timePreset = kAnyTime;
  int sizeUnit = 2;              // 0 bytes, 1 KiB, 2 MiB, 3 GiB
  std::u16string sizeText;       // "10-20"
  int dateFrom = 0, dateTo = 0;  // year * 10,000 + month * 100 + day

  bool HasSizeOrTime() const { return sizePreset != kAnySize || timePreset != kAnyTime; }
  bool IsOff() const { return category == 0 && !HasSizeOrTime(); }
};

struct SizeRange {
  int64_t least = -1, most = -1;  // bytes, inclusive; -1: no bound

  bool operator==(const SizeRange&) const = default;
};

// "10-20", "10-", "-20", with blanks and remarks in brackets. Empty where it says no range.
[[nodiscard]] std::optional<SizeRange> ParseCustomSizeRange(std::u16string_view text, int unit);

// FNV-1a of 32 bits over the units.
uint32_t CustomSizeHash(std::u16string_view text);

// What the tests of one pass share, as it was when the pass began.
struct FilterContext {
  FilterSettings settings;
  std::shared_ptr<const FilterTable> categories;
  std::optional<SizeRange> range;    // of kCustomSize; empty: no size acts
  bool usesCreated = false;          // the list is sorted by creation: that is the date meant
  FileTime now = 0, today = 0;       // today: its first moment
  std::optional<FileTime> from, to;  // of kCustomTime, in order; both empty: no time acts
  bool isDateBroken = false;         // a valid date that no calendar knows
};

// Parses custom ranges and dates, and asks which date the list is sorted by. `now` says what today is.
FilterContext MakeFilterContext(FilterSettings settings, FileTime now);

// The date that the time filter means.
inline FileTime DateOf(const FilterContext& context, const AttrEntry& entry) {
  return context.usesCreated ? entry.created : entry.modified;
}

// Whether sizes decide: a custom range that says nothing does not, and nobody need know the sizes.
bool ActsOnSize(const FilterContext& context);
// The same of dates.
bool ActsOnTime(const FilterContext& context);

// A known size and date pass both presets.
bool PassesPresets(const FilterContext& context, int64_t size, FileTime date);

// The size and time test of a file; asks the disk for what is not known.
bool PassesAttrFilter(const FilterContext& context, const MatchItem& hit, uint64_t frn);

// The size and time test of a file that a content search is about to open; no category acts. Asks the
// disk for what is not known. False for a record that is gone.
bool PassesContentFilter(const FilterContext& context, const MatchItem& candidate);

// Whether a hit stays, category and all.
bool PassesFilter(const FilterContext& context, const MatchItem& hit);

// The rows of `rows` that stay, in their order, as PassesFilter says of each. Empty once the ticket is
// stale. A job's work: it may ask the disk for each file.
[[nodiscard]] std::optional<ResultSet> FilterRows(const FilterContext& context, const ResultSet& rows,
                                                  const Ticket& ticket);

// Job "refresh_filtered_results" for the settings of the moment. Posts WM_FILTER_RESULTS when the rows
// that the list shows are known. Interface thread.
void RefreshFilteredResultsAsync(FilterSettings settings);

struct FilterCounts {
  std::vector<uint64_t> byCategory;  // rows of each
  bool isIncomplete = false;         // some rows' attributes are not known yet
  bool leavesOutAVolume = false;     // one was being written to; it counts another time
};
// Numbers of the held results by category, under the size and time filters, without the disk. Interface
// thread.
FilterCounts UpdateFilterCounts(const FilterSettings& settings);

}  // namespace quilmark
