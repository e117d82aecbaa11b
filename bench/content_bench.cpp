// Content searches over a real tree of files. bench/run.sh runs it beside a program that only reads the
// files, and beside others that search in files.
//
// QUILMARK_BENCH_TREE is the root of the tree.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>

#include "content/run/content_run.h"
#include "index/build/directory_walk.h"
#include "platform/drives.h"
#include "platform/utf.h"

namespace quilmark {
namespace {

VolumeIndex& TreeIndex() {
  static VolumeIndex& volume = *new VolumeIndex;
  return volume;
}

std::shared_ptr<ContentRun> MakeRun(const char* words) {
  auto run = std::make_shared<ContentRun>();
  run->Generation = SupersedeSearch();
  run->plan.Groups = MakeContentGroups(ParseQueryGroups(FromUtf8(words)));
  run->plan.contentMaxFileSizeMB = 0;
  VolumeIndex& volume = TreeIndex();
  for (uint32_t i = 0; i < volume.records.size(); ++i) {
    if (!volume.records[i].isDirectory) run->Candidates.push_back({&volume, i});
  }
  return run;
}

void Search(benchmark::State& state, const char* words) {
  size_t hits = 0, files = 0;
  for (auto _ : state) {
    state.PauseTiming();
    const auto run = MakeRun(words);
    state.ResumeTiming();
    hits = RunContentWorkers(run, static_cast<size_t>(state.range(0)))->size();
    files = run->Processed;
  }
  state.counters["hits"] = static_cast<double>(hits);
  state.counters["files"] = static_cast<double>(files);
}

// What the generated tree holds nowhere, in some files, and in most.
void Register() {
  for (const char* const words : {"Zyzzogeton_qx", "quarkvanadium", "the"}) {
    benchmark::RegisterBenchmark((std::string("content/") + words).c_str(),
                                 [words](benchmark::State& state) { Search(state, words); })
        ->Arg(1)
        ->Arg(2)
        ->UseRealTime()
        ->MeasureProcessCPUTime()
        ->Unit(benchmark::kMillisecond);
  }
}

}  // namespace
}  // namespace quilmark

int main(int argc, char** argv) {
  const char* const tree = std::getenv("QUILMARK_BENCH_TREE");
  const bool isThere = tree != nullptr && quilmark::MapDrive(u'C', quilmark::PathFromHost(tree)) &&
                       quilmark::BuildWalkVolume(quilmark::TreeIndex(), u"C:", u"bench");
  if (!isThere) {
    std::fprintf(stderr, "QUILMARK_BENCH_TREE names no folder\n");
    return 2;
  }
  quilmark::Register();
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
