// The name scan beside the limit of memory: a plain read of the pool's bytes in the same run.
//
// QUILMARK_BENCH_NAMES is the count of names (default 1,000,000).
#include <benchmark/benchmark.h>

#include <string>

#include "index/engine/search_engine.h"
#include "platform/utf.h"
#include "search/results/search_pipeline.h"
#include "search/scan/initials.h"
#include "search/scan/name_scan.h"
#include "support/corpus.h"

namespace quilmark {
namespace {

const std::vector<CorpusEntry>& Corpus() {
  static const std::vector<CorpusEntry> corpus = LoadCorpus(NameCount());
  return corpus;
}

VolumeIndex& Volume() {
  static VolumeIndex* const volume = AddVolume(Engine(), MakeVolume(Corpus()));
  return *volume;
}

size_t ReferenceHits(const std::string& query) {
  const QueryGroups groups = PrepareNameGroups(ParseQueryGroups(FromUtf8(query)));
  size_t hits = 0;
  for (uint32_t i = 0; i < Volume().records.size(); ++i) {
    hits += MatchName(FoldedNameOf(Volume().records[i]), groups);
  }
  return hits;
}

void ReadOfPool(benchmark::State& state) {
  const NamePool& pool = Volume().names;
  for (auto _ : state) benchmark::DoNotOptimize(ReadPool(pool));
}

// A whole search as the window starts it: parse, compile, scan, result set, publication.
void Search(benchmark::State& state, const std::string& query) {
  SearchJob job{.text = FromUtf8(query)};
  const size_t expected = ReferenceHits(query);
  for (auto _ : state) {
    job.ticket = SupersedeSearch();
    RunSearch(job);
  }
  const size_t hits = HeldResults()->size();
  state.counters["hits"] = static_cast<double>(hits);
  const bool mayAdd =
      IsInitialsQuery(PrepareNameGroups(ParseQueryGroups(job.text))) && job.options.initials;
  if (hits < expected || (hits > expected && !mayAdd)) state.SkipWithError("wrong answer");
}

// One kernel over the whole pool, no signatures, hits only counted.
void Kernel(benchmark::State& state, const ScanKernelRow& row, const std::string& needleText) {
  const CompiledQuery query = CompileQuery({{FromUtf8(needleText)}}, false);
  const Needle& needle = query.compiled[0].lead;
  const NamePool& pool = Volume().names;
  std::vector<uint64_t> hits(pool.textCount / 64 + 1);
  for (auto _ : state) {
    std::fill(hits.begin(), hits.end(), 0);
    for (const NameChunk& chunk : pool.chunks) {
      row.scan(needle, chunk.text.get(), chunk.text.get() + chunk.used, hits.data(), chunk.firstText);
    }
  }
  size_t count = 0;
  for (const uint64_t word : hits) count += static_cast<size_t>(__builtin_popcountll(word));
  if (count != ReferenceHits(needleText)) state.SkipWithError("wrong answer");
}

void InsertNames(benchmark::State& state) {
  for (auto _ : state) {
    auto volume = MakeVolume(Corpus());
    state.PauseTiming();
    volume.reset();
    state.ResumeTiming();
  }
  state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(Corpus().size()));
}

void BuildPaths(benchmark::State& state) {
  std::u16string path;
  size_t units = 0;
  for (auto _ : state) {
    for (uint32_t i = 0; i < Volume().records.size(); ++i) {
      BuildPathInto(Volume(), i, path);
      units += path.size();
    }
  }
  benchmark::DoNotOptimize(units);
  state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(Volume().records.size()));
}

void Memory(benchmark::State& state) {
  for (auto _ : state) benchmark::DoNotOptimize(MemoryOf(Volume()));
  size_t units = 0;
  for (const CorpusEntry& entry : Corpus()) units += entry.name.size();
  const auto records = static_cast<double>(Volume().records.size());
  state.counters["bytes_a_record"] = static_cast<double>(MemoryOf(Volume())) / records;
  state.counters["mean_name"] = static_cast<double>(units) / records;
}

void RegisterAll() {
  benchmark::RegisterBenchmark("read_of_pool", ReadOfPool)->Unit(benchmark::kMillisecond);
  for (const char* query : {"龘", "q", "e", "qqz", "zqx", "ing", "zqxjvkwy", "document", "qqzzjjxx",
                            "report and docx", "bg", "*", "qz", "\"\""}) {
    benchmark::RegisterBenchmark((std::string("search/") + query).c_str(), Search, query)
        ->Unit(benchmark::kMillisecond);
  }
  for (const ScanKernelRow& row : ScanKernels()) {
    if (!row.runsHere()) continue;
    for (const char* needle : {"龘", "e", "zqx", "ing", "zqxjvkwy", "document"}) {
      benchmark::RegisterBenchmark((std::string("kernel_") + row.name + "/" + needle).c_str(), Kernel,
                                   row, needle)
          ->Unit(benchmark::kMillisecond);
    }
  }
  benchmark::RegisterBenchmark("insert_names", InsertNames)->Unit(benchmark::kMillisecond);
  benchmark::RegisterBenchmark("build_paths", BuildPaths)->Unit(benchmark::kMillisecond);
  benchmark::RegisterBenchmark("memory", Memory);
}

}  // namespace
}  // namespace quilmark

int main(int argc, char** argv) {
  quilmark::RegisterAll();
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
