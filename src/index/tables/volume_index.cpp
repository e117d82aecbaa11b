#include "index/tables/volume_index.h"

#include <mutex>
#include <shared_mutex>

#include "platform/drives.h"
#include "platform/initial_letters.h"

namespace quilmark {

namespace {

// Positions up to which a record's name is stored and compared; longer ones cannot be had from any file
// system.
constexpr size_t kLongestName = 0xFFFF;

// All that can fail comes before the name is stored: the pool's text n is record n's for ever.
void ReserveOne(VolumeIndex& volume) {
  const uint32_t index = volume.records.size();
  volume.records.ReserveOne();
  GrowBits(volume.hidden, index + 1);
  GrowBits(volume.apart, index + 1);
  GrowBits(volume.initials, index + 1);
  ReserveSignature(volume.signatures, index);
}

// The record's name does not stand in its own place from now on.
void MarkApart(VolumeIndex& volume, uint32_t index) {
  if (!TestBit(volume.apart, index)) ++volume.apartCount;
  SetBit(volume.apart, index);
  SetBit(volume.hidden, index);
}

// No effect on a record that is not deleted.
void Revive(VolumeIndex& volume, uint32_t index) {
  FileRecord& record = volume.records[index];
  if (!record.deleted) return;
  ++volume.edits;
  record.deleted = 0;
  --volume.deletedCount;
  if (!TestBit(volume.apart, index)) {
    ClearBit(volume.hidden, index);
    ClearBit(volume.initials, index);
    AddSearchAids(volume.signatures, volume.initials, index, FoldedNameOf(record));
  }
  if (record.renamedText != kNoRenamedText) {
    ClearBit(volume.renamed[record.renamedTable].hidden, record.renamedText);
  }
}

// A search passes over the record's text of `renamed`, if it has one.
void HideRenamed(VolumeIndex& volume, const FileRecord& record) {
  if (record.renamedText == kNoRenamedText) return;
  SetBit(volume.renamed[record.renamedTable].hidden, record.renamedText);
}

bool IsPlain(std::u16string_view name) { return name.find(u'\0') == name.npos; }

// All that can fail comes before anything is changed. The caller makes the name the record's.
const char16_t* StoreOdd(VolumeIndex& volume, uint32_t index, std::u16string_view name) {
  std::vector<uint32_t>& records = volume.odd.records;
  if (records.size() == records.capacity()) records.reserve(2 * records.size() + 1);
  const char16_t* const text = StoreName(volume.odd.pool, name);
  records.push_back(index);
  return text;
}

// The same for a plain name that replaces another one.
const char16_t* StoreRenamed(RenamedNames& renamed, uint32_t index, std::u16string_view name) {
  const uint32_t number = renamed.pool.textCount;
  if (renamed.owners.size() == renamed.owners.capacity())
    renamed.owners.reserve(number + number / 4 + 64);
  GrowBits(renamed.hidden, number + 1);
  GrowBits(renamed.initials, number + 1);
  ReserveSignature(renamed.signatures, number);
  const char16_t* const text = StoreName(renamed.pool, name);
  renamed.owners.push_back(index);
  AddSearchAids(renamed.signatures, renamed.initials, number, {text + name.size() + 1, name.size()});
  return text;
}

// What was in the map is freed without the lock.
template <typename Value>
void EmptyMap(OrderedLock& mapLock, FrnMap<Value>& map) {
  FrnMap<Value> former;
  const std::scoped_lock lock(mapLock);
  former.swap(map);
}

}  // namespace

uint32_t AppendRecord(VolumeIndex& volume, const NewRecord& made, std::u16string_view name) {
  ++volume.edits;
  name = name.substr(0, kLongestName);
  FileRecord record;
  record.frn = made.frn;
  record.parentFrn = made.parentFrn;
  record.nameLength = static_cast<uint16_t>(name.size());
  record.isDirectory = made.isDirectory;

  // A name that cannot be scanned leaves an empty text behind.
  const bool isPlain = IsPlain(name);
  ReserveOne(volume);
  const char16_t* const oddText = isPlain ? nullptr : StoreOdd(volume, volume.records.size(), name);
  const char16_t* const text = StoreName(volume.names, isPlain ? name : std::u16string_view());
  record.name = isPlain ? text : oddText;

  const uint32_t index = volume.records.push_back(record);
  AddSearchAids(volume.signatures, volume.initials, index,
                isPlain ? FoldedNameOf(record) : std::u16string_view());
  if (!isPlain) MarkApart(volume, index);
  return index;
}

void RenameRecord(VolumeIndex& volume, uint32_t index, uint64_t parentFrn, std::u16string_view name) {
  name = name.substr(0, kLongestName);
  FileRecord& record = volume.records[index];
  if (record.parentFrn == parentFrn && NameOf(record) == name) {
    Revive(volume, index);
    return;
  }
  ++volume.edits;
  const bool isPlain = IsPlain(name);
  RenamedNames& renamed = volume.renamed[volume.renamedInto];
  const uint32_t number = isPlain ? renamed.pool.textCount : kNoRenamedText;
  record.name = isPlain ? StoreRenamed(renamed, index, name) : StoreOdd(volume, index, name);
  HideRenamed(volume, record);
  record.renamedTable = volume.renamedInto & 1;
  record.renamedText = number & kNoRenamedText;
  record.nameLength = static_cast<uint16_t>(name.size());
  record.parentFrn = parentFrn;
  MarkApart(volume, index);
  Revive(volume, index);
}

void MarkDeleted(VolumeIndex& volume, uint32_t index) {
  FileRecord& record = volume.records[index];
  if (record.deleted) return;
  ++volume.edits;
  record.deleted = 1;
  ++volume.deletedCount;
  SetBit(volume.hidden, index);
  HideRenamed(volume, record);
}

void NameVolume(VolumeIndex& volume, std::u16string_view drive, std::u16string_view fileSystem) {
  if (volume.drive != drive) volume.drive = drive;
  std::u16string name(fileSystem);
  const std::scoped_lock lock(volume.nameLock);
  volume.fileSystem.swap(name);
}

bool HasFileSystem(const VolumeIndex& volume, std::u16string_view fileSystem) {
  const std::scoped_lock lock(volume.nameLock);
  return volume.fileSystem == fileSystem;
}

bool IsNtfs(const VolumeIndex& volume) { return HasFileSystem(volume, kNtfs); }

void ResetVolumeTables(VolumeIndex& volume) {
  ++volume.builds;
  ++volume.edits;
  volume.records.clear();
  volume.recordsRead = 0;
  ResetNamePool(volume.names);
  volume.renamed = {};
  volume.renamedInto = 0;
  volume.tidying = {.moves = volume.tidying.moves + 1};
  volume.odd = {};
  ResetFrnTable(volume.frnToIndex);
  volume.inDoubt = {};
  volume.presumedGone = {};
  volume.deletedCount = 0;
  volume.apartCount = 0;
  volume.hidden = {};
  volume.apart = {};
  volume.initials = {};
  volume.signatures = {};
  EmptyMap(volume.attrLock, volume.attrs);
  EmptyMap(volume.mftSizesLock, volume.mftSizes);
  EmptyMap(volume.folderSizesLock, volume.folderSizes);
  volume.folderSizesDirty = true;
}

std::optional<RecordKind> KindOf(const VolumeIndex& volume, uint32_t index) {
  if (index >= volume.records.size()) return std::nullopt;
  const FileRecord& record = volume.records[index];
  return RecordKind{
      .frn = record.frn, .isDirectory = record.isDirectory != 0, .isDeleted = record.deleted != 0};
}

std::optional<RecordKind> KindOfLocked(const VolumeIndex& volume, uint32_t index) {
  const std::shared_lock lock(volume.indexLock);
  return KindOf(volume, index);
}

static size_t MemoryOf(const RecordBits& bits) { return bits.words.capacity() * sizeof(bits.words[0]); }

static size_t MemoryOf(const RenamedNames& renamed) {
  return MemoryOf(renamed.pool) + renamed.owners.capacity() * sizeof(renamed.owners[0]) +
         MemoryOf(renamed.hidden) + MemoryOf(renamed.initials) + MemoryOf(renamed.signatures);
}

static size_t MemoryOf(const OddNames& odd) {
  return MemoryOf(odd.pool) + odd.records.capacity() * sizeof(odd.records[0]);
}

size_t MemoryOf(const VolumeIndex& volume) {
  return volume.records.MemoryBytes() + MemoryOf(volume.names) + MemoryOf(volume.renamed[0]) +
         MemoryOf(volume.renamed[1]) + MemoryOf(volume.odd) + MemoryOf(volume.frnToIndex) +
         MemoryOf(volume.signatures) + MemoryOf(volume.hidden) + MemoryOf(volume.apart) +
         MemoryOf(volume.initials);
}

}  // namespace quilmark
