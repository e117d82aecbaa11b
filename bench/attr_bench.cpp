// Sorting, filtering and folder totals over a volume of made-up names.
//
// QUILMARK_BENCH_NAMES is the count of names (default 1,000,000).
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdlib>
#include <string>

#include "index/search_engine.h"
#include "platform/text.h"
#include "search/attr_cache.h"
#include "search/filters.h"
#include "search/folder_sizes.h"
#include "search/sort.h"
#include "support/corpus.h"

namespace quilmark {
namespace {

size_t NameCount() {
  const char* const count = std::getenv("QUILMARK_BENCH_NAMES");
  return count != nullptr ? std::strtoull(count, nullptr, 10) : 1'000'000;
}

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

std::vector<MatchItem> AllRows() {
  std::vector<MatchItem> rows;
  for (uint32_t i = 0; i < Volume().records.size(); ++i) rows.push_back({&Volume(), i});
  return rows;
}

void SortText(benchmark::State& state, int column) {
  const std::vector<MatchItem> rows = AllRows();
  const SortJob job{.generation = searchGeneration, .column = column};
  for (auto _ : state) {
    if (SortedByText(rows, job).size() != rows.size()) state.SkipWithError("rows are missing");
  }
  state.SetItemsProcessed(static_cast<int64_t>(state.iterations() * rows.size()));
}

// The same order by a plain sort that folds at each comparison, as _wcsicmp does.
void SortPlain(benchmark::State& state) {
  const std::vector<MatchItem> rows = AllRows();
  for (auto _ : state) {
    std::vector<MatchItem> sorted = rows;
    std::sort(sorted.begin(), sorted.end(), [](const MatchItem& a, const MatchItem& b) {
      const auto order =
          CompareNoCase(NameOf(Volume().records[a.index]), NameOf(Volume().records[b.index]));
      return order == 0 ? a.index < b.index : order < 0;
    });
    benchmark::DoNotOptimize(sorted.data());
  }
  state.SetItemsProcessed(static_cast<int64_t>(state.iterations() * rows.size()));
}

void Filter(benchmark::State& state) {
  const std::vector<MatchItem> rows = AllRows();
  const FilterContext context =
      MakeFilterContext({.category = 2, .sizePreset = k1To100MB}, NowFileTime());
  for (auto _ : state) {
    size_t kept = 0;
    for (const MatchItem& row : rows) kept += PassesFilter(context, row) ? 1 : 0;
    benchmark::DoNotOptimize(kept);
  }
  state.SetItemsProcessed(static_cast<int64_t>(state.iterations() * rows.size()));
}

void FolderTotals(benchmark::State& state) {
  VolumeIndex& volume = Volume();
  for (auto _ : state) RebuildFolderSizes(volume);
  state.SetItemsProcessed(static_cast<int64_t>(state.iterations() * volume.records.size()));
}

BENCHMARK_CAPTURE(SortText, name, kColumnName)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(SortText, path, kColumnOfPath)->Unit(benchmark::kMillisecond);
BENCHMARK(SortPlain)->Unit(benchmark::kMillisecond);
BENCHMARK(Filter)->Unit(benchmark::kMillisecond);
BENCHMARK(FolderTotals)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace quilmark

BENCHMARK_MAIN();
