#include "index/tables/tidy_names.h"

#include <algorithm>
#include <cstring>
#include <functional>
#include <mutex>
#include <new>
#include <shared_mutex>
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

// An odd name leaves an empty text behind, which the new pages are already.
void CopyTexts(const VolumeIndex& volume, TidyStep& step) {
  char16_t* at = step.chunk.text.get();
  step.firstMark = (step.firstText + kTextsPerMark - 1) / kTextsPerMark;
  for (uint32_t index = step.firstText; index < step.lastText; ++index) {
    if (index % kTextsPerMark == 0) step.marks.push_back(at);
    const size_t units = UnitsOf(volume, index);
    if (!IsOdd(volume, index)) std::memcpy(at, volume.records[index].name, units * sizeof(char16_t));
    at += units;
  }
}

// The pages in which the chunk's texts are, with what they say of its neighbours.
void CopyPages(const VolumeIndex& volume, TidyStep& step) {
  step.firstPage = step.firstText / kTextsPerPage;
  const uint32_t behind = (step.lastText + kTextsPerPage - 1) / kTextsPerPage;
  ReserveSignature(step.signatures, (behind - step.firstPage) * kTextsPerPage - 1);
  for (uint32_t page = step.firstPage; page < behind; ++page) {
    std::memcpy(step.signatures.pages[page - step.firstPage].get(), volume.signatures.pages[page].get(),
                kSignatureRows * sizeof(BlockMask));
  }
  const auto& words = volume.initials.words;
  const size_t wordsAPage = kTextsPerPage / 64;
  const size_t end = std::min(words.size(), behind * wordsAPage);
  step.initials.words.assign(words.begin() + static_cast<ptrdiff_t>(step.firstPage * wordsAPage),
                             words.begin() + static_cast<ptrdiff_t>(end));
}

// Of blocks that reach into a neighbouring chunk nothing is taken out.
void SignTexts(const VolumeIndex& volume, TidyStep& step) {
  const uint32_t base = step.firstPage * kTextsPerPage;
  const bool toEnd = step.lastText == volume.names.textCount;
  ClearBlocks(step.signatures, (step.firstText - base + kTextsPerMark - 1) / kTextsPerMark,
              (step.lastText - base + (toEnd ? kTextsPerMark - 1 : 0)) / kTextsPerMark);
  for (uint32_t index = step.firstText; index < step.lastText; ++index) {
    ClearBit(step.initials, index - base);
    const FileRecord& record = volume.records[index];
    if (record.deleted || IsOdd(volume, index)) continue;
    AddSearchAids(step.signatures, step.initials, index - base, FoldedNameOf(record));
  }
}

// What is written under the exclusive hold and not read above comes back to memory here, if the system
// has taken it.
void TouchWhatIsWritten(const VolumeIndex& volume, const TidyStep& step) {
  const auto touch = [](const auto& word) { [[maybe_unused]] const volatile auto read = word; };
  for (uint32_t word = step.firstText / 64; word * 64 < step.lastText; ++word) {
    touch(volume.hidden.words[word]);
  }
  for (uint32_t index = step.firstText; index < step.lastText; ++index) {
    const FileRecord& record = volume.records[index];
    if (record.renamedText == kNoRenamedText) continue;
    touch(volume.renamed[record.renamedTable].hidden.words[record.renamedText / 64]);
  }
  for (size_t i = 0; i < step.marks.size(); ++i) touch(volume.names.marks[step.firstMark + i]);
}

void PrepareChunk(const VolumeIndex& volume, TidyStep& step) {
  const ChunkRecords range = RecordsOf(volume.names, step.number);
  step.firstText = range.first;
  step.lastText = range.last;
  step.chunk = MakeChunkFor(volume, step.number, range);
  CopyTexts(volume, step);
  CopyPages(volume, step);
  SignTexts(volume, step);
  TouchWhatIsWritten(volume, step);
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

void PlaceNames(VolumeIndex& volume, const TidyStep& step) {
  const char16_t* at = step.chunk.text.get();
  for (uint32_t index = step.firstText; index < step.lastText; ++index) {
    const size_t units = UnitsOf(volume, index);
    if (!IsOdd(volume, index)) {
      FileRecord& record = volume.records[index];
      record.name = at;
      if (record.renamedText != kNoRenamedText) EndApart(volume, index);
    }
    at += units;
  }
}

void FinishChunk(VolumeIndex& volume, TidyStep& step) {
  PlaceNames(volume, step);
  std::copy(step.marks.begin(), step.marks.end(),
            volume.names.marks.begin() + static_cast<ptrdiff_t>(step.firstMark));
  std::swap_ranges(step.signatures.pages.begin(), step.signatures.pages.end(),
                   volume.signatures.pages.begin() + step.firstPage);
  std::copy(step.initials.words.begin(), step.initials.words.end(),
            volume.initials.words.begin() +
                static_cast<ptrdiff_t>(size_t{step.firstPage} * (kTextsPerPage / 64)));
  if (step.number + 1 == volume.names.chunks.size()) volume.names.usedInChunk = step.chunk.used;
  std::swap(volume.names.chunks[step.number], step.chunk);
  ++volume.tidying.moves;
}

void BeginTidying(VolumeIndex& volume) {
  volume.tidying.isUnderWay = true;
  volume.renamedInto ^= 1;
}

void EndTidying(VolumeIndex& volume, TidyStep& step) {
  std::swap(volume.renamed[volume.renamedInto ^ 1], step.former);
  volume.tidying.isUnderWay = false;
}

}  // namespace

std::optional<TidyStep> PrepareTidying(const VolumeIndex& volume) {
  const Tidying& tidying = volume.tidying;
  if (!tidying.isUnderWay && !IsDue(volume)) return std::nullopt;
  TidyStep step{.edits = volume.edits, .number = tidying.isUnderWay ? tidying.nextChunk : 0};
  const size_t count = volume.names.chunks.size();
  while (step.number < count && !HasNamesApart(volume, RecordsOf(volume.names, step.number))) {
    ++step.number;
  }
  try {
    if (step.number < count) PrepareChunk(volume, step);
  } catch (const std::bad_alloc&) {
    return std::nullopt;
  }
  return step;
}

bool FinishTidying(VolumeIndex& volume, TidyStep& step) {
  if (volume.edits != step.edits) return false;
  Tidying& tidying = volume.tidying;
  if (!tidying.isUnderWay) BeginTidying(volume);
  if (step.chunk.text != nullptr) FinishChunk(volume, step);
  tidying.nextChunk = step.number + 1;
  if (tidying.nextChunk >= volume.names.chunks.size()) EndTidying(volume, step);
  return true;
}

void TidyNames(VolumeIndex& volume) {
  std::optional<TidyStep> step;
  {
    const std::shared_lock lock(volume.indexLock);
    step = PrepareTidying(volume);
  }
  if (!step) return;
  const std::unique_lock lock(volume.indexLock);
  // `step` outlives the lock, and frees what is no longer used. Where an edit came between, the next
  // block tries again.
  (void)FinishTidying(volume, *step);
}

SeenName SeeName(const VolumeIndex& volume, const FileRecord& record) {
  return {record.name, volume.tidying.moves, std::hash<std::u16string_view>()(NameOf(record))};
}

bool IsNameAsSeen(const VolumeIndex& volume, const FileRecord& record, const SeenName& seen) {
  if (volume.tidying.moves == seen.moves) return record.name == seen.text;
  return std::hash<std::u16string_view>()(NameOf(record)) == seen.hash;
}

}  // namespace quilmark
