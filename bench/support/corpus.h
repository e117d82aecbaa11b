// A volume of made-up names, as a large disk would hold them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "index/tables/volume_index.h"

namespace quilmark {

struct CorpusEntry {
  uint32_t id = 0, parent = 0;
  bool isDirectory = false;
  std::u16string name;
};

// The environment variable QUILMARK_BENCH_NAMES, or a million.
size_t NameCount();

// Entries of the file `records.tsv` that bench/tools/make_names.c writes, below the folder that the
// environment variable QUILMARK_BENCH_DATA names: names-<count>/records.tsv. Ends the program with a
// message if it is missing.
std::vector<CorpusEntry> LoadCorpus(size_t count);

// The entries as the volume "C:".
std::unique_ptr<VolumeIndex> MakeVolume(const std::vector<CorpusEntry>& corpus);

// Puts the entry behind the records of a block that opens with a position, as the change journal tells
// of it. False, and nothing put, where the block would grow beyond 64 KiB.
bool AddUsnRecord(std::vector<std::byte>& block, const CorpusEntry& entry, uint32_t reason);

// What an ideal scan of the pool costs: every byte of its texts loaded once with 256-bit loads. The sum
// of them.
uint64_t ReadPool(const NamePool& pool);

}  // namespace quilmark
