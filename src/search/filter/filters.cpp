#include "search/filter/filters.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <shared_mutex>
#include <string>
#include <utility>

#include "platform/background.h"
#include "platform/text_file.h"
#include "search/attributes/attr_cache.h"
#include "search/filter/extension_table.h"
#include "search/results/columns.h"
#include "search/results/row_runs.h"

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
  if (!ActsOnTime(context)) return true;
  if (date == 0 || context.isDateBroken) return false;
  if (preset == kToday) return date >= context.today;
  if (preset == kCustomTime) return date >= *context.from && date <= *context.to;
  if (date > context.now) return true;
  return context.now - date <= (preset == k7Days ? 7 : 30) * kDay;
}

std::u16string_view ExtensionOf(std::u16string_view foldedName) {
  const size_t dot = foldedName.rfind(u'.');
  return dot == std::u16string_view::npos ? std::u16string_view() : foldedName.substr(dot);
}

bool HasExtension(const FilterCategory& category, std::u16string_view extension) {
  return !extension.empty() && std::find(category.extensions.begin(), category.extensions.end(),
                                         extension) != category.extensions.end();
}

const FilterCategory* CategoryOf(const FilterContext& context) {
  const auto index = static_cast<size_t>(context.settings.category);
  return context.settings.category > 0 && index < context.categories->size()
             ? &(*context.categories)[index]
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
          .sizeHash = CustomSizeHash(settings.sizeText)};
}

void PostFiltered() { PostIfAlive(TheSearch().hooks.window, WM_FILTER_RESULTS, 0, 0); }

using Rows = std::shared_ptr<const ResultSet>;

// What a pass asks of a record, worked out once.
struct RecordRule {
  const FilterCategory* category = nullptr;  // null: all
  bool selectsFolders = false, asksAttributes = false, keepsFolders = false;
};

RecordRule RecordRuleOf(const FilterContext& context) {
  RecordRule rule{.category = CategoryOf(context)};
  rule.selectsFolders = rule.category != nullptr && IsFolderCategory(*rule.category);
  rule.asksAttributes = ActsOnSize(context) || ActsOnTime(context);
  rule.keepsFolders =
      !context.settings.HasSizeOrTime() && (context.settings.category == 0 || rule.selectsFolders);
  return rule;
}

// What the record alone says of a row.
enum class Verdict { kDrop, kKeep, kAskAttributes };

template <typename HasExtensionOf>
Verdict Judge(const RecordRule& rule, const FileRecord& record, HasExtensionOf hasExtension) {
  if (record.deleted) return Verdict::kDrop;
  if (record.isDirectory) return rule.keepsFolders ? Verdict::kKeep : Verdict::kDrop;
  if (rule.selectsFolders) return Verdict::kDrop;
  if (rule.category != nullptr && !hasExtension(FoldedNameOf(record))) return Verdict::kDrop;
  return rule.asksAttributes ? Verdict::kAskAttributes : Verdict::kKeep;
}

// One pass over many rows. Locks are taken once a run; only what is not known yet is asked for row by
// row.
class FilterPass {
 public:
  FilterPass(const FilterContext& context, const Ticket& ticket)
      : context_(context), rule_(RecordRuleOf(context)), ticket_(ticket) {
    if (rule_.category != nullptr) extensions_ = MakeExtensionTable({rule_.category, 1});
  }

  // False if the pass went stale.
  bool Add(RowRun run, ResultSet& kept) {
    if (!ticket_.IsCurrent()) return false;
    if (run[0].volume == nullptr) return true;
    const VolumeIndex& volume = *run[0].volume;
    JudgeRun(volume, run);
    if (rule_.asksAttributes) PeekAttrs(volume, std::span(frns_).first(run.size()), entries_);
    for (size_t i = 0; i < run.size(); ++i) {
      if (verdicts_[i] == Verdict::kDrop) continue;
      if (verdicts_[i] == Verdict::kAskAttributes && !IsWarm(entries_[i])) {
        if (!ticket_.IsCurrent()) return false;
        if (!PassesAttrFilter(context_, run[i], frns_[i])) continue;
      } else if (verdicts_[i] == Verdict::kAskAttributes &&
                 !PassesPresets(context_, entries_[i].size, DateOf(context_, entries_[i]))) {
        continue;
      }
      kept.push_back(run[i]);
    }
    return true;
  }

 private:
  // frns_[i] is 0, which no file has, where no attributes are asked for.
  void JudgeRun(const VolumeIndex& volume, RowRun run) {
    const auto isOfCategory = [this](std::u16string_view foldedName) {
      return ExtensionIdOf(extensions_, foldedName) != extensions_.None();
    };
    const std::shared_lock lock(volume.indexLock);
    PrefetchRecords(volume, run);
    for (size_t i = 0; i < run.size(); ++i) {
      verdicts_[i] = Verdict::kDrop;
      frns_[i] = 0;
      if (run[i].index >= volume.records.size()) continue;
      const FileRecord& record = volume.records[run[i].index];
      verdicts_[i] = Judge(rule_, record, isOfCategory);
      if (verdicts_[i] == Verdict::kAskAttributes) frns_[i] = record.frn;
    }
  }

  // The entry answers all that the presets ask.
  bool IsWarm(const AttrEntry& entry) const {
    const bool needsDate = ActsOnTime(context_);
    return entry.valid && (!needsDate || DateOf(context_, entry) != 0);
  }

  const FilterContext& context_;
  const RecordRule rule_;
  const Ticket ticket_;
  ExtensionTable extensions_;
  std::array<Verdict, kRowsARun> verdicts_;
  std::array<uint64_t, kRowsARun> frns_;
  std::array<AttrEntry, kRowsARun> entries_;
};

void RunFilter(const Ticket& ticket, const FilterContext& context, const Rows& rows) {
  auto passing = FilterRows(context, *rows, ticket);
  if (!passing || TheSearch().ActiveCategory != context.settings.category) return;
  const uint64_t count = passing->size();
  FilteredRows shown{.rows = std::make_shared<const ResultSet>(std::move(*passing)),
                     .source = rows,
                     .FilteredKey = KeyOf(context),
                     .DisplayCount = count};
  if (TheSearch().FilteredResults.Publish(ticket, std::move(shown))) PostFiltered();
}

enum class Answer { kHeld, kWanted };

// Makes former filter jobs stale. The set that is held is the answer, or another one is wanted: the same
// filters over another order of the results go on showing it until the job has theirs, which may mean
// another date; under other filters it is dropped, and the list shows all.
struct FilterStart {
  Ticket ticket;
  Answer answer = Answer::kWanted;
};

FilterStart BeginFilter(const FilterKey& key, const Rows& rows) {
  FilterStart start;
  Rows source;  // dies outside the lock
  start.ticket = TheSearch().FilteredResults.Supersede([&](FilteredRows& shown) {
    if (shown.rows != nullptr && shown.FilteredKey == key && !rows->empty()) {
      shown.DisplayCount = shown.rows->size();
      source = shown.source.lock();
      if (source == rows) start.answer = Answer::kHeld;
    } else {
      shown = {.rows = {}, .source = {}, .FilteredKey = {}, .DisplayCount = rows->size()};
    }
  });
  return start;
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
  context.usesCreated = TheSearch().CurrentResults.Read(
      [](const SearchResults& held) { return held.SortColumn == kColumnCreated; });
  if (context.settings.sizePreset == kCustomSize) {
    context.range = ParseCustomSizeRange(context.settings.sizeText, context.settings.sizeUnit);
  }
  LocalTime today = LocalTimeOf(now);
  today.hour = today.minute = today.second = today.millisecond = 0;
  context.today = FileTimeOfLocal(today).value_or(now);
  if (context.settings.timePreset == kCustomTime) TakeCustomDates(context);
  return context;
}

bool ActsOnSize(const FilterContext& context) {
  const int preset = context.settings.sizePreset;
  return preset != kAnySize && (preset != kCustomSize || context.range);
}

bool ActsOnTime(const FilterContext& context) {
  const int preset = context.settings.timePreset;
  return preset != kAnyTime && (preset != kCustomTime || context.isDateBroken || context.from);
}

bool PassesPresets(const FilterContext& context, int64_t size, FileTime date) {
  return PassesSize(context, size) && PassesTime(context, date);
}

bool PassesAttrFilter(const FilterContext& context, const MatchItem& hit, uint64_t frn) {
  const bool needsDate = ActsOnTime(context);
  if (!needsDate && !ActsOnSize(context)) return true;
  const auto held = PeekAttr(*hit.volume, frn);
  if (!held && !needsDate) {
    const auto size = LookupMftSize(*hit.volume, frn);
    if (size) return PassesPresets(context, static_cast<int64_t>(size->logical), 0);
  }
  AttrEntry entry = held.value_or(AttrEntry());
  if (!held || (needsDate && DateOf(context, entry) == 0)) {
    EnsureFileAttributes(hit.volume, hit.index, entry, needsDate ? Insist::kOnDisk : Insist::kNo);
  }
  return entry.valid && PassesPresets(context, entry.size, DateOf(context, entry));
}

bool PassesContentFilter(const FilterContext& context, const MatchItem& candidate) {
  if (candidate.volume == nullptr) return false;
  const auto kind = KindOfLocked(*candidate.volume, candidate.index);
  if (!kind || kind->isDeleted || kind->isDirectory) return false;
  return PassesAttrFilter(context, candidate, kind->frn);
}

bool PassesFilter(const FilterContext& context, const MatchItem& hit) {
  if (hit.volume == nullptr) return false;
  const RecordRule rule = RecordRuleOf(context);
  const auto isOfCategory = [&rule](std::u16string_view foldedName) {
    return HasExtension(*rule.category, ExtensionOf(foldedName));
  };
  uint64_t frn = 0;
  Verdict verdict = Verdict::kDrop;
  {
    const std::shared_lock lock(hit.volume->indexLock);
    if (hit.index >= hit.volume->records.size()) return false;
    const FileRecord& record = hit.volume->records[hit.index];
    frn = record.frn;
    verdict = Judge(rule, record, isOfCategory);
  }
  if (verdict != Verdict::kAskAttributes) return verdict == Verdict::kKeep;
  return PassesAttrFilter(context, hit, frn);
}

std::optional<ResultSet> FilterRows(const FilterContext& context, const ResultSet& rows,
                                    const Ticket& ticket) {
  ResultSet kept;
  FilterPass pass(context, ticket);
  const bool isDone = ForEachRun(rows, [&](RowRun run) { return pass.Add(run, kept); });
  if (!isDone || !ticket.IsCurrent()) return std::nullopt;
  return kept;
}

void RefreshFilteredResultsAsync(FilterSettings settings) {
  const FilterContext context = MakeFilterContext(std::move(settings), NowFileTime());
  const auto rows = HeldResults();
  const FilterStart start = BeginFilter(KeyOf(context), rows);
  const bool isAnswered = start.answer == Answer::kHeld || rows->empty() || context.settings.IsOff();
  if (isAnswered) return PostFiltered();
  const bool isStarted =
      RunBackground("refresh_filtered_results",
                    [ticket = start.ticket, context, rows] { RunFilter(ticket, context, rows); });
  if (!isStarted) PostFiltered();
}

}  // namespace quilmark
