// A search of an index that has taken in many changes, beside the same search of an index built anew
// from what the changes left; and what a record takes in both.
//
// Two thirds of the names are there at first. Half as many changes follow: a third of them creations, in
// two journal records each as a closed file leaves them, a third renames, a third deletions.
// QUILMARK_BENCH_NAMES is the count of names (default 1,000,000).
#include <benchmark/benchmark.h>

#include <string>

#include "index/engine/search_engine.h"
#include "index/follow/usn_monitor.h"
#include "platform/bytes.h"
#include "platform/usn_record.h"
#include "platform/utf.h"
#include "search/results/search_pipeline.h"
#include "support/corpus.h"

namespace quilmark {
namespace {

constexpr uint32_t kUsnReasonClose = 0x8000'0000;  // winioctl.h

struct Journal {
  std::vector<std::byte> block = std::vector<std::byte>(sizeof(uint64_t));
  VolumeIndex& volume;

  void Apply() {
    ApplyJournalBlock(volume, block);
    block.resize(sizeof(uint64_t));
  }

  void Add(const CorpusEntry& entry, uint32_t reason) {
    if (AddUsnRecord(block, entry, reason)) return;
    Apply();
    AddUsnRecord(block, entry, reason);
  }
};

// The names of a volume before the changes, and one after another the names that they bring.
struct Course {
  std::vector<CorpusEntry> before, later;
};

Course LoadCourse() {
  Course course{.before = LoadCorpus(NameCount()), .later = {}};
  const auto middle = course.before.begin() + static_cast<ptrdiff_t>(course.before.size() * 2 / 3);
  course.later.assign(middle, course.before.end());
  course.before.erase(middle, course.before.end());
  return course;
}

// Creations, renames and deletions in turn, all over the volume: another record each time.
void Change(VolumeIndex& volume, const Course& course) {
  Journal journal{.volume = volume};
  const size_t count = course.before.size();
  constexpr size_t kStep = 7'919;  // prime
  for (size_t i = 0; i < course.later.size(); ++i) {
    const CorpusEntry& former = course.before[i * kStep % count];
    if (i % 3 == 0) {
      journal.Add(course.later[i], kUsnReasonFileCreate);
      journal.Add(course.later[i], kUsnReasonFileCreate | kUsnReasonClose);
    } else if (i % 3 == 1) {
      CorpusEntry renamed = former;
      renamed.name = course.later[i].name;
      journal.Add(renamed, kUsnReasonRenameNewName);
    } else {
      journal.Add(former, kUsnReasonFileDelete);
    }
  }
  journal.Apply();
}

// What is alive, as an index that has seen nothing else.
std::unique_ptr<VolumeIndex> Rebuild(const VolumeIndex& volume) {
  std::vector<CorpusEntry> corpus;
  for (uint32_t i = 0; i < volume.records.size(); ++i) {
    const FileRecord& record = volume.records[i];
    if (record.deleted) continue;
    corpus.push_back({.id = static_cast<uint32_t>(record.frn),
                      .parent = static_cast<uint32_t>(record.parentFrn),
                      .isDirectory = record.isDirectory != 0,
                      .name = std::u16string(NameOf(record))});
  }
  return MakeVolume(corpus);
}

struct Volumes {
  VolumeIndex* changed;
  VolumeIndex* rebuilt;
};

Volumes& Both() {
  static Volumes both = [] {
    const Course course = LoadCourse();
    auto changed = MakeVolume(course.before);
    Change(*changed, course);
    auto rebuilt = Rebuild(*changed);
    VolumeIndex* const first = AddVolume(Engine(), std::move(changed));
    return Volumes{first, AddVolume(Engine(), std::move(rebuilt))};
  }();
  return both;
}

// A whole search, as the window starts it, of one of the two.
size_t SearchOnce(VolumeIndex& volume, SearchJob& job) {
  Both().changed->valid = &volume == Both().changed;
  Both().rebuilt->valid = &volume == Both().rebuilt;
  job.ticket = SupersedeSearch();
  RunSearch(job);
  return HeldResults()->size();
}

void Search(benchmark::State& state, VolumeIndex& volume, const std::string& query) {
  SearchJob job{.text = FromUtf8(query)};
  size_t hits = 0;
  for (auto _ : state) hits = SearchOnce(volume, job);
  state.counters["hits"] = static_cast<double>(hits);
  if (hits != SearchOnce(*Both().rebuilt, job)) state.SkipWithError("the two have other hits");
}

void Memory(benchmark::State& state, const VolumeIndex& volume) {
  for (auto _ : state) benchmark::DoNotOptimize(MemoryOf(volume));
  const auto alive = static_cast<double>(volume.records.size() - volume.deletedCount);
  state.counters["bytes_a_file"] = static_cast<double>(MemoryOf(volume)) / alive;
}

void RegisterAll() {
  const std::pair<const char*, VolumeIndex*> volumes[] = {{"changed", Both().changed},
                                                          {"rebuilt", Both().rebuilt}};
  for (const auto& [name, volume] : volumes) {
    for (const char* query : {"龘", "q", "e", "qqz", "zqx", "ing", "zqxjvkwy", "document", "qqzzjjxx",
                              "report and docx", "bg", "\"\""}) {
      benchmark::RegisterBenchmark((std::string(name) + "/" + query).c_str(), Search, std::ref(*volume),
                                   std::string(query))
          ->Unit(benchmark::kMillisecond);
    }
    benchmark::RegisterBenchmark((std::string("memory/") + name).c_str(), Memory, std::cref(*volume));
  }
}

}  // namespace
}  // namespace quilmark

int main(int argc, char** argv) {
  quilmark::RegisterAll();
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
