// Names of one volume: each stored once in one run, as on disk and folded. Guarded by the volume's
// indexLock.
//
// A stored name stays where it is, so a pointer to it is good as long as indexLock is held, shared by
// readers, exclusively by writers. Only TidyNames moves names, and with them the space of former ones
// is free again.
//
// The texts of a chunk follow each other without a gap, which is what lets a search run over a chunk as
// over one long string: text number n is found by counting NULs, two a text. `marks` says where to start
// counting.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "platform/pages.h"

namespace quilmark {

// Every kTextsPerMark-th text of a pool has a mark.
inline constexpr uint32_t kTextsPerMark = 64;

// Zeroed units behind the capacity of each chunk: vector loads may run this far past the last text.
inline constexpr size_t kChunkSlack = 512;

// One run of texts.
struct NameChunk {
  Pages<char16_t> text;
  size_t used = 0;         // units taken by texts; zeros follow
  uint32_t firstText = 0;  // number of the first text in this chunk
};

// The texts of one table, numbered from 0 in the order in which they were stored.
struct NamePool {
  std::vector<NameChunk> chunks;
  size_t chunkCapacity = 2'097'152;    // UTF-16 units: 4 MiB a chunk
  size_t usedInChunk = chunkCapacity;  // equal at the start: the first store opens a chunk
  uint32_t textCount = 0;
  std::vector<const char16_t*> marks;  // start of text 0, 64, 128, ...
};

// Stores `name` and its folded copy, each with a NUL behind it: 2 * size + 2 units in one run.
// Returns the spelling as given; the folded copy begins at result + name.size() + 1. A name that a
// chunk cannot hold gets a chunk of its own. Fails only where memory does (std::bad_alloc),
// and has then stored nothing.
const char16_t* StoreName(NamePool& pool, std::u16string_view name);

// Frees every chunk; the next store opens a new one.
void ResetNamePool(NamePool& pool);

// Bytes taken from the system, slack and marks included.
size_t MemoryOf(const NamePool& pool);

}  // namespace quilmark
