#include "index/tidy_names.h"

#include <algorithm>
#include <cstring>
#include <functional>
#include <new>
#include <utility>

namespace quilmark {

namespace {

// Below it a search of the names apart is cheap, whatever their share.
constexpr uint32_t kLeastRenamed = kTextsPerPage;
constexpr uint32_t kRenamedShare = 16;  // one in so many

bool IsDue(const VolumeIndex& volume) {
  const uint32_t renamed = volume.renamed[volume.renamedInto].pool.textCount;
  return renamed >= kLeastRenamed && renamed >= volume.records.size() / kRenamedShare;
}

// The records whose texts a chunk holds.
struct ChunkRecords {
  uint32_t first, last;
};

ChunkRecords RecordsOf(const NamePool& pool, size_t chunk) {
  const bool isLast = chunk + 1 == pool.chunks.size();
  return {pool.chunks[chunk].firstText, isLast ? pool.textCount : pool.chunks[chunk + 1].firstText};
}

bool HasNamesApart(const VolumeIndex& volume, ChunkRecords range) {
  uint32_t index = range.first;
  while (index < range.last && !TestBit(volume.apart, index)) {
    const bool skipsWord = index % 64 == 0 && volume.apart.words[index / 64] == 0;
    index += skipsWord ? 64 : 1;
  }
  return index < range.last;
}

// Such a name stays apart, and its own place empty.
bool IsOdd(const VolumeIndex& volume, uint32_t index) {
  return TestBit(volume.apart, index) && volume.records[index].renamedText == kNoRenamedText;
}

// Units that the record's text takes in its own place.
size_t UnitsOf(const VolumeIndex& volume, uint32_t index) {
  return IsOdd(volume, index) ? 2 : 2 * size_t{volume.records[index].nameLength} + 2;
}

// Empty, with room for the texts as they are now. One that is not much shorter is as large as any other,
// for whole huge pages.
NameChunk MakeChunkFor(const VolumeIndex& volume, size_t chunk, ChunkRecords range) {
  const NamePool& pool = volume.names;
  size_t units = 0;
  for (uint32_t index = range.first; index < range.last; ++index) units += UnitsOf(volume, index);
  const bool isOpen = chunk + 1 == pool.chunks.size();
  const bool isFull = units > pool.chunkCapacity - pool.chunkCapacity / 16;
  const size_t capacity = isOpen || isFull ? std::max(units, pool.chunkCapacity) : units;
  return {.text = MakePages<char16_t>(capacity + kChunkSlack), .used = units, .firstText = range.first};
}

// The name stands in its own place from now on.
void EndApart(VolumeIndex& volume, uint32_t index) {
  FileRecord& record = volume.records[index];
  SetBit(volume.renamed[record.renamedTable].hidden, record.renamedText);
  record.renamedText = kNoRenamedText;
  ClearBit(volume.apart, index);
  --volume.apartCount;
  if (!record.deleted) ClearBit(volume.hidden, index);
}

void CopyTexts(VolumeIndex& volume, ChunkRecords range, char16_t* at) {
  for (uint32_t index = range.first; index < range.last; ++index) {
    if (index % kTextsPerMark == 0) volume.names.marks[index / kTextsPerMark] = at;
    const size_t units = UnitsOf(volume, index);
    if (!IsOdd(volume, index)) {
      FileRecord& record = volume.records[index];
      std::memcpy(at, record.name, units * sizeof(char16_t));
      record.name = at;
      if (record.renamedText != kNoRenamedText) EndApart(volume, index);
    }
    at += units;
  }
}

// Of blocks that reach into a neighbouring chunk nothing is taken out.
void SignTexts(VolumeIndex& volume, ChunkRecords range) {
  const bool toEnd = range.last == volume.names.textCount;
  ClearBlocks(volume.signatures, (range.first + kTextsPerMark - 1) / kTextsPerMark,
              (range.last + (toEnd ? kTextsPerMark - 1 : 0)) / kTextsPerMark);
  for (uint32_t index = range.first; index < range.last; ++index) {
    ClearBit(volume.initials, index);
    const FileRecord& record = volume.records[index];
    if (record.deleted || IsOdd(volume, index)) continue;
    AddSearchAids(volume.signatures, volume.initials, index, FoldedNameOf(record));
  }
}

// All that can fail comes before anything is changed.
void TidyChunk(VolumeIndex& volume, size_t chunk) {
  const ChunkRecords range = RecordsOf(volume.names, chunk);
  NameChunk anew = MakeChunkFor(volume, chunk, range);
  CopyTexts(volume, range, anew.text.get());
  SignTexts(volume, range);
  if (chunk + 1 == volume.names.chunks.size()) volume.names.usedInChunk = anew.used;
  std::swap(volume.names.chunks[chunk], anew);
  ++volume.tidying.moves;
}

void BeginTidying(VolumeIndex& volume) {
  volume.tidying.isUnderWay = true;
  volume.tidying.nextChunk = 0;
  volume.renamedInto ^= 1;
}

void EndTidying(VolumeIndex& volume) {
  volume.renamed[volume.renamedInto ^ 1] = {};
  volume.tidying.isUnderWay = false;
}

}  // namespace

void TidyNames(VolumeIndex& volume) {
  Tidying& tidying = volume.tidying;
  if (!tidying.isUnderWay && !IsDue(volume)) return;
  if (!tidying.isUnderWay) BeginTidying(volume);
  const size_t count = volume.names.chunks.size();
  while (tidying.nextChunk < count &&
         !HasNamesApart(volume, RecordsOf(volume.names, tidying.nextChunk))) {
    ++tidying.nextChunk;
  }
  try {
    if (tidying.nextChunk < count) TidyChunk(volume, tidying.nextChunk);
  } catch (const std::bad_alloc&) {
    return;  // tried again behind the next block
  }
  if (++tidying.nextChunk >= count) EndTidying(volume);
}

SeenName SeeName(const VolumeIndex& volume, const FileRecord& record) {
  return {record.name, volume.tidying.moves, std::hash<std::u16string_view>()(NameOf(record))};
}

bool IsNameAsSeen(const VolumeIndex& volume, const FileRecord& record, const SeenName& seen) {
  if (volume.tidying.moves == seen.moves) return record.name == seen.text;
  return std::hash<std::u16string_view>()(NameOf(record)) == seen.hash;
}

}  // namespace quilmark
