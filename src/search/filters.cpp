#include "search/filters.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <mutex>
#include <shared_mutex>
#include <string>
#include <utility>

#include "platform/background.h"
#include "platform/text.h"
#include "platform/text_file.h"
#include "search/attr_cache.h"
#include "search/sort.h"

namespace quilmark {

namespace {

constexpr int64_t kMega = 0x10'0000, kHundredMega = 0x640'0000;
constexpr FileTime kDay = 24 * 3'600 * kFileTimePerSecond;

std::u16string WithoutBlanks(std::u16string_view text) {
  std::u16string rest(text);
  std::erase_if(rest, [](char16_t unit) { return unit == u' ' || unit == u'\t'; });
  return rest;
}

// A bound of a range, in bytes: -1 for none, empty for what is no number.
std::optional<int64_t> ParseBound(std::u16string_view text, double multiplier) {
  text = TrimText(text.substr(0, text.find(u'(')));
  if (text.empty()) return -1;
  std::string digits;
  for (const char16_t unit : text) digits += unit < 0x80 ? static_cast<char>(unit) : '?';
  char* end = nullptr;
  const double value = std::strtod(digits.c_str(), &end);
  if (end == digits.c_str() || !std::isfinite(value) || value < 0) return std::nullopt;
  const double bytes = multiplier * value;
  constexpr double kMost = 9.2e18;
  return bytes >= kMost ? std::numeric_limits<int64_t>::max() : static_cast<int64_t>(bytes);
}

std::optional<LocalTime> DayOf(int date) {
  const LocalTime day{.year = date / 10'000, .month = date / 100 % 100, .day = date % 100};
  const bool isValid =
      day.year >= 1970 && day.month >= 1 && day.month <= 12 && day.day >= 1 && day.day <= 31;
  if (!isValid) return std::nullopt;
  return day;
}

void TakeCustomDates(FilterContext& context) {
  auto from = DayOf(context.settings.dateFrom), to = DayOf(context.settings.dateTo);
  if (!from || !to) return;
  if (context.settings.dateFrom > context.settings.dateTo) std::swap(from, to);
  to->hour = 23;
  to->minute = to->second = 59;
  to->millisecond = 999;
  context.from = FileTimeOfLocal(*from);
  context.to = FileTimeOfLocal(*to);
  context.isDateBroken = !context.from || !context.to;
}

bool PassesSize(const FilterContext& context, int64_t size) {
  switch (context.settings.sizePreset) {
    case kBelow1MB:
      return size < kMega;
    case k1To100MB:
      return size >= kMega && size <= kHundredMega;
    case kAbove100MB:
      return size > kHundredMega;
    case kCustomSize:
      if (!context.range) return true;
      return (context.range->least < 0 || size >= context.range->least) &&
             (context.range->most < 0 || size <= context.range->most);
    default:
      return true;
  }
}

bool PassesTime(const FilterContext& context, FileTime date) {
  const int preset = context.settings.timePreset;
  if (preset == kAnyTime) return true;
  if (preset == kCustomTime && !context.isDateBroken && !context.from)
    return true;  // no dates: no filter
  if (date == 0 || context.isDateBroken) return false;
  if (preset == kToday) return date >= context.today;
  if (preset == kCustomTime) return date >= *context.from && date <= *context.to;
  if (date > context.now) return true;
  return context.now - date <= (preset == k7Days ? 7 : 30) * kDay;
}

FileTime DateOf(const FilterContext& context, const AttrEntry& entry) {
  return context.usesCreated ? entry.created : entry.modified;
}

// A record as a pass needs it; the lock is held for the copy alone.
struct FilterRow {
  uint64_t frn = 0;
  bool isDirectory = false;
  std::u16string extension;  // folded, with its "."; empty for none
};

std::u16string_view ExtensionOf(std::u16string_view foldedName) {
  const size_t dot = foldedName.rfind(u'.');
  return dot == std::u16string_view::npos ? std::u16string_view() : foldedName.substr(dot);
}

// False for a row that is gone, or whose lock is not held.
bool ReadRow(const MatchItem& item, const std::shared_lock<OrderedLock>& lock, FilterRow& row) {
  if (!lock || item.index >= item.volume->records.size()) return false;
  const FileRecord& record = item.volume->records[item.index];
  if (record.deleted) return false;
  row.frn = record.frn;
  row.isDirectory = record.isDirectory;
  row.extension = ExtensionOf(FoldedNameOf(record));
  return true;
}

bool HasExtension(const FilterCategory& category, std::u16string_view extension) {
  return !extension.empty() && std::find(category.extensions.begin(), category.extensions.end(),
                                         extension) != category.extensions.end();
}

bool HasSizeOrTime(const FilterSettings& settings) {
  return settings.sizePreset != kAnySize || settings.timePreset != kAnyTime;
}

const FilterCategory* CategoryOf(const FilterContext& context) {
  const auto row = static_cast<size_t>(context.settings.category);
  return context.settings.category > 0 && row < context.categories->size() ? &(*context.categories)[row]
                                                                           : nullptr;
}

FilterKey KeyOf(const FilterContext& context) {
  const FilterSettings& settings = context.settings;
  return {.category = settings.category,
          .sizePreset = settings.sizePreset,
          .timePreset = settings.timePreset,
          .sizeUnit = settings.sizeUnit,
          .dateFrom = settings.dateFrom,
          .dateTo = settings.dateTo,
          .isRangeValid = context.range.has_value(),
          .sizeHash = CustomSizeHash(settings.sizeText),
          .usesCreated = context.usesCreated};
}

void PostFiltered() { PostIfAlive(searchHooks.window, WM_FILTER_RESULTS, 0, 0); }

bool IsFilterCurrent(uint64_t generation) {
  return FilterGeneration == generation && !ShutdownRequested;
}

using Rows = std::shared_ptr<const ResultSet>;

void RunFilter(uint64_t generation, const FilterContext& context, const Rows& rows) {
  auto kept = std::make_shared<ResultSet>();
  for (const MatchItem& item : *rows) {
    if (!IsFilterCurrent(generation)) return;
    if (PassesFilter(context, item)) kept->push_back(item);
  }
  Rows shown = std::move(kept), source = rows;
  {
    const std::scoped_lock lock(FilteredLock);
    if (!IsFilterCurrent(generation) || ActiveCategory != context.settings.category) return;
    DisplayCount = shown->size();
    FilteredResults.swap(shown);
    FilteredSource.swap(source);
    FilteredKey = KeyOf(context);
  }
  // The former sets die here, outside the lock, or with their last readers.
  PostFiltered();
}

// True if the set that is held is the answer. The same filters over another order of the results go on
// showing it until the job has theirs; under other filters it is dropped, and the list shows all.
bool TakeHeldAnswer(const FilterKey& key, const Rows& rows) {
  Rows dropped, source;  // declared first: they die outside the lock
  const std::scoped_lock lock(FilteredLock);
  if (FilteredResults != nullptr && FilteredKey == key && !rows->empty()) {
    DisplayCount = FilteredResults->size();
    return FilteredSource == rows;
  }
  dropped = std::exchange(FilteredResults, nullptr);
  source = std::exchange(FilteredSource, nullptr);
  FilteredKey = {};
  DisplayCount = rows->size();
  return false;
}

// What a pass without the disk makes of a row.
enum class Known { kPasses, kFails, kMissing };

Known TestKnown(const FilterContext& context, const MatchItem& item, const FilterRow& row) {
  if (!HasSizeOrTime(context.settings)) return Known::kPasses;
  if (row.isDirectory) return Known::kFails;
  AttrEntry entry;
  if (!PeekAttr(*item.volume, row.frn, entry)) return Known::kMissing;
  const FileTime date = DateOf(context, entry);
  if (context.settings.timePreset != kAnyTime && date == 0) return Known::kMissing;
  return PassesPresets(context, entry.size, date) ? Known::kPasses : Known::kFails;
}

}  // namespace

std::optional<SizeRange> ParseCustomSizeRange(std::u16string_view text, int unit) {
  constexpr double kMultipliers[] = {1, 1'024, 1'048'576, 1'073'741'824};
  const double multiplier = unit >= 0 && unit <= 3 ? kMultipliers[unit] : kMultipliers[2];
  const std::u16string rest = WithoutBlanks(TrimText(text));
  const size_t dash = rest.find(u'-');
  if (dash == std::u16string::npos) return std::nullopt;
  const auto least = ParseBound(std::u16string_view(rest).substr(0, dash), multiplier);
  const auto most = ParseBound(std::u16string_view(rest).substr(dash + 1), multiplier);
  if (!least || !most || (*least < 0 && *most < 0)) return std::nullopt;
  if (*least >= 0 && *most >= 0 && *least > *most) return std::nullopt;
  return SizeRange{*least, *most};
}

uint32_t CustomSizeHash(std::u16string_view text) {
  uint32_t hash = 0x811C'9DC5;
  for (const char16_t unit : text) hash = (hash ^ unit) * 16'777'619;
  return hash;
}

FilterContext MakeFilterContext(FilterSettings settings, FileTime now) {
  FilterContext context{.settings = std::move(settings), .categories = CurrentCategories(), .now = now};
  {
    const std::scoped_lock lock(ResultsLock);
    context.usesCreated = SortColumn == kColumnCreated;
  }
  if (context.settings.sizePreset == kCustomSize) {
    context.range = ParseCustomSizeRange(context.settings.sizeText, context.settings.sizeUnit);
  }
  LocalTime today = LocalTimeOf(now);
  today.hour = today.minute = today.second = today.millisecond = 0;
  context.today = FileTimeOfLocal(today).value_or(now);
  if (context.settings.timePreset == kCustomTime) TakeCustomDates(context);
  return context;
}

bool PassesPresets(const FilterContext& context, int64_t size, FileTime date) {
  return PassesSize(context, size) && PassesTime(context, date);
}

bool PassesAttrFilter(const FilterContext& context, const MatchItem& item, uint64_t frn) {
  if (!HasSizeOrTime(context.settings)) return true;
  const bool needsDate = context.settings.timePreset != kAnyTime;
  AttrEntry entry;
  const bool isHeld = PeekAttr(*item.volume, frn, entry);
  MftSize size;
  if (!isHeld && !needsDate && LookupMftSize(*item.volume, frn, size)) {
    return PassesPresets(context, static_cast<int64_t>(size.logical), 0);
  }
  if (!isHeld || (needsDate && DateOf(context, entry) == 0)) {
    EnsureFileAttributes(item.volume, item.index, entry, needsDate ? Insist::kOnDisk : Insist::kNo);
  }
  return entry.valid && PassesPresets(context, entry.size, DateOf(context, entry));
}

bool PassesFilter(const FilterContext& context, const MatchItem& item) {
  FilterRow row;
  if (item.volume == nullptr) return false;
  if (!ReadRow(item, std::shared_lock(item.volume->indexLock), row)) return false;
  const FilterCategory* const category = CategoryOf(context);
  const bool selectsFolders = category != nullptr && IsFolderRow(*category);
  if (row.isDirectory) {
    if (context.settings.IsOff()) return true;
    return selectsFolders && !HasSizeOrTime(context.settings);
  }
  if (selectsFolders) return false;
  if (category != nullptr && !HasExtension(*category, row.extension)) return false;
  return PassesAttrFilter(context, item, row.frn);
}

void RefreshFilteredResultsAsync(FilterSettings settings) {
  const uint64_t generation = ++FilterGeneration;
  const FilterContext context = MakeFilterContext(std::move(settings), NowFileTime());
  const auto rows = HeldResults();
  const bool isAnswered = TakeHeldAnswer(KeyOf(context), rows);
  if (isAnswered || rows->empty() || context.settings.IsOff()) return PostFiltered();
  const bool isStarted = RunBackground(
      "refresh_filtered_results", [generation, context, rows] { RunFilter(generation, context, rows); });
  if (!isStarted) PostFiltered();
}

FilterCounts UpdateFilterCounts(const FilterSettings& settings) {
  const FilterContext context = MakeFilterContext(settings, NowFileTime());
  const FilterTable& table = *context.categories;
  FilterCounts counts{.rows = std::vector<uint64_t>(table.size())};
  FilterRow row;
  const Rows held = HeldResults();
  for (const MatchItem& item : *held) {
    if (item.volume == nullptr) continue;
    const auto lock = LockForGlance(*item.volume);
    counts.isIncomplete = counts.isIncomplete || (!lock && IsSearchable(*item.volume));
    if (!ReadRow(item, lock, row)) continue;
    const Known known = TestKnown(context, item, row);
    counts.isIncomplete = counts.isIncomplete || known == Known::kMissing;
    if (known != Known::kPasses || counts.rows.empty()) continue;
    ++counts.rows[0];
    for (size_t i = 1; i < table.size(); ++i) {
      const bool belongs =
          row.isDirectory ? IsFolderRow(table[i]) : HasExtension(table[i], row.extension);
      counts.rows[i] += belongs ? 1 : 0;
    }
  }
  return counts;
}

}  // namespace quilmark
