#include "index/tables/name_pool.h"

#include <algorithm>
#include <cstring>

#include "platform/text.h"

namespace quilmark {

static constexpr size_t kFirstMarks = 64;

static void OpenChunk(NamePool& pool, size_t capacity) {
  pool.chunks.push_back(
      {.text = MakePages<char16_t>(capacity + kChunkSlack), .firstText = pool.textCount});
  pool.usedInChunk = 0;
}

const char16_t* StoreName(NamePool& pool, std::u16string_view name) {
  const size_t needed = 2 * name.size() + 2;
  const bool isMarked = pool.textCount % kTextsPerMark == 0;
  if (isMarked && pool.marks.size() == pool.marks.capacity()) {
    pool.marks.reserve(std::max<size_t>(2 * pool.marks.size(), kFirstMarks));
  }
  if (pool.usedInChunk + needed > pool.chunkCapacity)
    OpenChunk(pool, std::max(needed, pool.chunkCapacity));

  NameChunk& chunk = pool.chunks.back();
  char16_t* const text = chunk.text.get() + pool.usedInChunk;
  if (isMarked) pool.marks.push_back(text);
  if (!name.empty()) std::memcpy(text, name.data(), name.size() * sizeof(char16_t));
  FoldUnits(text, text + name.size() + 1, name.size());
  pool.usedInChunk += needed;
  chunk.used = pool.usedInChunk;
  ++pool.textCount;
  return text;
}

void ResetNamePool(NamePool& pool) {
  pool.chunks.clear();
  pool.marks.clear();
  pool.textCount = 0;
  pool.usedInChunk = pool.chunkCapacity;
}

size_t MemoryOf(const NamePool& pool) {
  size_t bytes = pool.marks.capacity() * sizeof(pool.marks[0]);
  for (const NameChunk& chunk : pool.chunks) bytes += chunk.text.get_deleter().bytes;
  return bytes;
}

}  // namespace quilmark
