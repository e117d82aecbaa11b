// A real folder tree into the searchable index. bench/run.sh runs it beside a walk that only reads
// folders.
//
// QUILMARK_BENCH_TREE is the root of the tree.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>

#include "index/build/directory_walk.h"
#include "platform/drives.h"

namespace quilmark {
namespace {

void Walk(benchmark::State& state) {
  uint32_t records = 0;
  for (auto _ : state) {
    VolumeIndex volume;
    if (!BuildWalkVolume(volume, u"C:", u"bench", {.threads = static_cast<unsigned>(state.range(0))})) {
      state.SkipWithError("nothing found");
    }
    state.PauseTiming();
    records = volume.records.size();
    ResetVolumeTables(volume);
    state.ResumeTiming();
  }
  state.counters["records"] = records;
  state.SetItemsProcessed(state.iterations() * records);
}
BENCHMARK(Walk)->Name("walk")->Arg(1)->Arg(2)->UseRealTime()->MeasureProcessCPUTime()->Unit(
    benchmark::kMillisecond);

}  // namespace
}  // namespace quilmark

int main(int argc, char** argv) {
  const char* const tree = std::getenv("QUILMARK_BENCH_TREE");
  if (tree == nullptr || !quilmark::MapDrive(u'C', quilmark::PathFromHost(tree))) {
    std::fprintf(stderr, "QUILMARK_BENCH_TREE names no folder\n");
    return 2;
  }
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
