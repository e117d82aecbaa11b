// Sorting, filtering and folder totals over a volume of made-up names.
//
// QUILMARK_BENCH_NAMES is the count of names (default 1,000,000).
#include <benchmark/benchmark.h>

#include <algorithm>
#include <mutex>
#include <optional>
#include <random>
#include <string>
#include <utility>

#include "index/engine/search_engine.h"
#include "platform/text.h"
#include "search/attributes/attr_cache.h"
#include "search/attributes/attr_jobs.h"
#include "search/attributes/folder_sizes.h"
#include "search/filter/filters.h"
#include "search/sort/sort.h"
#include "search/sort/sort_rows.h"
#include "support/corpus.h"

namespace quilmark {
namespace {

// With attributes of every file.
VolumeIndex& Volume() {
  static VolumeIndex* const volume = [] {
    VolumeIndex* const made = AddVolume(Engine(), MakeVolume(LoadCorpus(NameCount())));
    for (uint32_t i = 0; i < made->records.size(); ++i) {
      const FileRecord& record = made->records[i];
      const int64_t size = int64_t{i} * 7'919 % 200'000'000;
      StoreAttr(*made, record.frn, {.size = size, .modified = i + 1, .created = i + 1, .valid = true});
    }
    return made;
  }();
  return *volume;
}

enum class Order { kOfIndex, kShuffled };

std::vector<MatchItem> AllRows(Order order = Order::kOfIndex) {
  std::vector<MatchItem> rows;
  for (uint32_t i = 0; i < Volume().records.size(); ++i) rows.push_back({&Volume(), i});
  if (order == Order::kShuffled) std::shuffle(rows.begin(), rows.end(), std::mt19937(1));
  return rows;
}

void CountRows(benchmark::State& state, size_t rows) {
  state.SetItemsProcessed(static_cast<int64_t>(state.iterations() * rows));
}

std::u16string TextOf(const MatchItem& row, int column) {
  if (column == kColumnOfPath) return BuildPath(*row.volume, row.index);
  return std::u16string(NameOf(row.volume->records[row.index]));
}

bool IsSorted(const std::vector<MatchItem>& rows, int column) {
  for (size_t i = 1; i < rows.size(); ++i) {
    const auto order = CompareNoCase(TextOf(rows[i - 1], column), TextOf(rows[i], column));
    if (order > 0 || (order == 0 && rows[i - 1].index > rows[i].index)) return false;
  }
  return true;
}

void SortText(benchmark::State& state, int column) {
  const std::vector<MatchItem> rows = AllRows();
  std::optional<ResultSet> sorted;
  for (auto _ : state) sorted = SortedByText(rows, {column, true}, Ticket::Unlimited());
  if (sorted->size() != rows.size() || !IsSorted(*sorted, column)) state.SkipWithError("wrong order");
  CountRows(state, rows.size());
}

// The same order by a plain sort that folds at each comparison, as _wcsicmp does. The texts are there
// already, which spares it the building of paths.
void SortPlain(benchmark::State& state, int column) {
  const std::vector<MatchItem> rows = AllRows();
  std::vector<std::u16string> texts;
  for (const MatchItem& row : rows) texts.push_back(TextOf(row, column));
  for (auto _ : state) {
    std::vector<MatchItem> sorted = rows;
    std::sort(sorted.begin(), sorted.end(), [&texts](const MatchItem& a, const MatchItem& b) {
      const auto order = CompareNoCase(texts[a.index], texts[b.index]);
      return order == 0 ? a.index < b.index : order < 0;
    });
    benchmark::DoNotOptimize(sorted.data());
  }
  CountRows(state, rows.size());
}

// By size or date, with all attributes known.
void SortValues(benchmark::State& state, int column) {
  const auto rows = std::make_shared<const ResultSet>(AllRows());
  std::optional<SortedSet> sorted;
  for (auto _ : state) sorted = SortRows(rows, {column, true}, Ticket::Unlimited());
  if (!sorted || sorted->rows.size() != rows->size()) state.SkipWithError("nothing was sorted");
  CountRows(state, rows->size());
}

void Filter(benchmark::State& state, Order order, const FilterSettings& settings) {
  const std::vector<MatchItem> rows = AllRows(order);
  const FilterContext context = MakeFilterContext(settings, NowFileTime());
  std::optional<ResultSet> kept;
  for (auto _ : state) kept = FilterRows(context, rows, Ticket::Unlimited());
  const auto passes = [&context](const MatchItem& row) { return PassesFilter(context, row); };
  const auto expected = std::count_if(rows.begin(), rows.end(), passes);
  if (!kept || kept->size() != static_cast<size_t>(expected)) state.SkipWithError("wrong rows");
  CountRows(state, rows.size());
}

void Count(benchmark::State& state, Order order, const FilterSettings& settings) {
  auto rows = std::make_shared<const ResultSet>(AllRows(order));
  const size_t size = rows->size();
  TheSearch().CurrentResults.Change([&rows](SearchResults& held) { held.rows = std::move(rows); });
  FilterCounts counts;
  for (auto _ : state) counts = UpdateFilterCounts(settings);
  if (!settings.HasSizeOrTime() && counts.byCategory[0] != size) state.SkipWithError("rows are missing");
  CountRows(state, size);
}

enum class Sizes { kSeen, kScanned };

// From the attributes that were seen, or from the sizes of a scan of all files.
void FolderTotals(benchmark::State& state, Sizes sizes) {
  VolumeIndex& volume = Volume();
  for (const auto& [frn, entry] : volume.attrs) {
    if (sizes == Sizes::kScanned) volume.mftSizes[frn].logical = static_cast<uint64_t>(entry.size);
  }
  for (auto _ : state) RebuildFolderSizes(volume);
  volume.mftSizes.clear();
  const uint64_t folder = volume.records[volume.records.size() - 1].parentFrn;
  uint64_t expected = 0;
  for (uint32_t i = 0; i < volume.records.size(); ++i) {
    const FileRecord& record = volume.records[i];
    const bool isBelow = !record.isDirectory && record.parentFrn == folder;
    if (isBelow) expected += static_cast<uint64_t>(volume.attrs.at(record.frn).size);
  }
  const uint64_t total = GetFolderSize(volume, folder, IfDirty::kLeave).value_or(0);
  if (total < expected || expected == 0) {
    state.SkipWithError("wrong total");
  }
  CountRows(state, volume.records.size());
}

const FilterSettings kCategory = {.category = 2}, kSize = {.sizePreset = k1To100MB},
                     kBoth = {.category = 2, .sizePreset = k1To100MB};

BENCHMARK_CAPTURE(SortText, name, kColumnName)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(SortText, path, kColumnOfPath)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(SortPlain, name, kColumnName)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(SortPlain, path, kColumnOfPath)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(SortValues, size, kColumnSize)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(SortValues, date, kColumnModified)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(Filter, category, Order::kOfIndex, kCategory)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Filter, size, Order::kOfIndex, kSize)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Filter, both, Order::kOfIndex, kBoth)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Filter, both_shuffled, Order::kShuffled, kBoth)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Filter, size_shuffled, Order::kShuffled, kSize)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Count, all, Order::kOfIndex, FilterSettings())
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK_CAPTURE(Count, size, Order::kOfIndex, kSize)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(Count, all_shuffled, Order::kShuffled, FilterSettings())
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK_CAPTURE(FolderTotals, of_what_was_seen, Sizes::kSeen)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(FolderTotals, of_a_scan, Sizes::kScanned)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace quilmark

BENCHMARK_MAIN();
