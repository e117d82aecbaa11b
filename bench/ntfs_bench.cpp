// Records of a volume into the index: from blocks in memory beside a bare walk over the same blocks,
// from the image of a volume, and changes of a journal.
//
// QUILMARK_BENCH_NAMES is the count of names (default 1,000,000), QUILMARK_BENCH_IMAGE an NTFS image.
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <cstring>
#include <mutex>
#include <string>

#include "index/build/ntfs_volume.h"
#include "index/follow/usn_monitor.h"
#include "platform/bytes.h"
#include "platform/drives.h"
#include "platform/files.h"
#include "platform/usn_record.h"
#include "support/corpus.h"

namespace quilmark {
namespace {

using Block = std::vector<std::byte>;

// The corpus as blocks of USN records; block k opens with the number k + 1.
std::vector<Block> MakeBlocks(uint32_t reason) {
  std::vector<Block> blocks;
  for (const CorpusEntry& entry : LoadCorpus(NameCount())) {
    if (!blocks.empty() && AddUsnRecord(blocks.back(), entry, reason)) continue;
    blocks.emplace_back(sizeof(uint64_t));
    StoreLe(std::span(blocks.back()), 0, static_cast<uint64_t>(blocks.size()));
    AddUsnRecord(blocks.back(), entry, reason);
  }
  return blocks;
}

const std::vector<Block>& Blocks() {
  static const std::vector<Block> blocks = MakeBlocks(0);
  return blocks;
}

// Hands out the blocks in order, as fast as memory does.
class BlockDevice : public VolumeDevice {
 public:
  Reply Control(uint32_t code, std::span<const std::byte> input, std::span<std::byte> output) override {
    if (code == kFsctlQueryUsnJournal) return {.bytes = output.size()};
    if (code != kFsctlEnumUsnData) return {.error = kErrorJournalNotActive};
    const auto number = LoadLe<uint64_t>(input, 0);
    if (number >= Blocks().size()) return {.error = kErrorHandleEof};
    const Block& block = Blocks()[number];
    if (block.size() > output.size()) return {.error = kErrorMoreData};
    std::memcpy(output.data(), block.data(), block.size());
    return {.bytes = block.size()};
  }
  Reply ReadAt(ByteOffset, std::span<std::byte>) override { return {}; }
  void Cancel() override {}
  uint32_t Close() override { return 0; }
};

std::unique_ptr<VolumeDevice> OpenBlocks(std::u16string_view, VolumeAccess, uint32_t&) {
  return std::make_unique<BlockDevice>();
}

// Names copied into one pool and parents into one table, as little as an index could do.
void BareWalkOfBlocks(benchmark::State& state) {
  std::vector<std::byte> pool(NameCount() * 128);
  std::vector<uint64_t> parents(NameCount() + 16);
  uint64_t records = Blocks().size();  // read from disk before the clock runs
  for (auto _ : state) {
    size_t used = 0;
    records = 0;
    for (const Block& block : Blocks()) {
      UsnCursor cursor{.block = block};
      while (const auto record = NextUsnRecord(cursor)) {
        std::memcpy(pool.data() + used, record->name.data(), record->name.size());
        used += record->name.size();
        parents[records++] = record->parentFrn.value;
      }
    }
    benchmark::DoNotOptimize(pool.data());
  }
  state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(records));
}

void Build(benchmark::State& state, std::u16string_view drive) {
  uint32_t records = 0;
  for (auto _ : state) {
    VolumeIndex volume;
    if (!BuildNtfsVolume(volume, drive)) state.SkipWithError("not built");
    state.PauseTiming();
    records = volume.records.size();
    CloseVolume(volume);
    {
      const std::scoped_lock lock(volume.indexLock);
      ResetVolumeTables(volume);
    }
    state.ResumeTiming();
  }
  state.counters["records"] = records;
  state.SetItemsProcessed(state.iterations() * records);
}

void EnumerateBlocks(benchmark::State& state) {
  InstallVolumeOpener(OpenBlocks);
  Build(state, u"M:");
  InstallVolumeOpener(nullptr);
}

void EnumerateImage(benchmark::State& state) { Build(state, u"N:"); }

// Every name of the corpus created, renamed and deleted by the journal.
void ReplayJournal(benchmark::State& state) {
  const std::vector<Block> phases[] = {MakeBlocks(kUsnReasonFileCreate),
                                       MakeBlocks(kUsnReasonRenameNewName),
                                       MakeBlocks(kUsnReasonFileDelete)};
  for (auto _ : state) {
    VolumeIndex volume;
    for (const auto& blocks : phases) {
      for (const Block& block : blocks) ApplyJournalBlock(volume, block);
    }
    if (volume.deletedCount != volume.records.size()) state.SkipWithError("wrong answer");
  }
  state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(3 * NameCount()));
}

}  // namespace
}  // namespace quilmark

int main(int argc, char** argv) {
  using namespace quilmark;
  const auto add = [](const char* name, void (*run)(benchmark::State&)) {
    benchmark::RegisterBenchmark(name, run)->UseRealTime()->MeasureProcessCPUTime()->Unit(
        benchmark::kMillisecond);
  };
  add("bare_walk_of_blocks", BareWalkOfBlocks);
  add("enumerate_blocks", EnumerateBlocks);
  add("replay_journal", ReplayJournal);
  if (const char* const image = std::getenv("QUILMARK_BENCH_IMAGE")) {
    MapDrive(u'N', PathFromHost(image));
    add("enumerate_image", EnumerateImage);
  }
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
