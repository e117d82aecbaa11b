#include "index/volume_index.h"

#include <mutex>
#include <shared_mutex>

#include "index/ntfs_volume.h"
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

// The record's name stands in `renamed` from now on, where no signature and no order leads to it.
void MarkApart(VolumeIndex& volume, uint32_t index) {
  if (!TestBit(volume.apart, index)) ++volume.apartCount;
  SetBit(volume.apart, index);
  SetBit(volume.hidden, index);
}

void SetInitials(VolumeIndex& volume, uint32_t index, std::u16string_view name) {
  if (InitialsStemOf(name).empty()) {
    ClearBit(volume.initials, index);
  } else {
    SetBit(volume.initials, index);
  }
}

// No effect on a record that is not deleted.
void Revive(VolumeIndex& volume, uint32_t index) {
  FileRecord& record = volume.records[index];
  if (!record.deleted) return;
  record.deleted = 0;
  --volume.deletedCount;
  if (!TestBit(volume.apart, index)) ClearBit(volume.hidden, index);
}

// What a search needs to know of a name that stands in its own place of the pool.
void AddSearchAids(VolumeIndex& volume, uint32_t index) {
  const std::u16string_view folded = FoldedNameOf(volume.records[index]);
  const bool aboveAscii = AddToSignatures(volume.signatures, index, folded);
  if (!aboveAscii) return;
  SetInitials(volume, index, folded);
  if (TestBit(volume.initials, index)) AddInitialsToSignatures(volume.signatures, index, folded);
}

}  // namespace

VolumeIndex::~VolumeIndex() { CloseVolume(*this); }

uint32_t AppendRecord(VolumeIndex& volume, const NewRecord& made, std::u16string_view name) {
  name = name.substr(0, kLongestName);
  FileRecord record;
  record.frn = made.frn;
  record.parentFrn = made.parentFrn;
  record.nameLength = static_cast<uint16_t>(name.size());
  record.isDirectory = made.isDirectory;

  // A NUL inside a name would shift every later text of the pool: such a name leaves an empty text
  // behind.
  const bool isPlain = name.find(u'\0') == name.npos;
  ReserveOne(volume);
  if (!isPlain) record.name = StoreName(volume.renamed, name);
  const char16_t* const text = StoreName(volume.names, isPlain ? name : std::u16string_view());
  if (isPlain) record.name = text;

  const uint32_t index = volume.records.push_back(record);
  if (isPlain) {
    AddSearchAids(volume, index);
  } else {
    AddToSignatures(volume.signatures, index, {});
    MarkApart(volume, index);
    SetInitials(volume, index, name);
  }
  return index;
}

void RenameRecord(VolumeIndex& volume, uint32_t index, uint64_t parentFrn, std::u16string_view name) {
  name = name.substr(0, kLongestName);
  FileRecord& record = volume.records[index];
  if (record.parentFrn == parentFrn && NameOf(record) == name) {
    Revive(volume, index);
    return;
  }
  record.name = StoreName(volume.renamed, name);
  record.nameLength = static_cast<uint16_t>(name.size());
  record.parentFrn = parentFrn;
  MarkApart(volume, index);
  SetInitials(volume, index, name);
  Revive(volume, index);
}

void MarkDeleted(VolumeIndex& volume, uint32_t index) {
  FileRecord& record = volume.records[index];
  if (record.deleted) return;
  record.deleted = 1;
  ++volume.deletedCount;
  SetBit(volume.hidden, index);
}

void NoteBack(VolumeIndex& volume) {
  volume.takenOut = false;
  volume.goneTold = false;
}

void NameVolume(VolumeIndex& volume, std::u16string_view drive, std::u16string_view fileSystem) {
  if (volume.drive != drive) volume.drive = drive;
  const std::scoped_lock lock(volume.nameLock);
  volume.fileSystem = fileSystem;
}

bool HasFileSystem(const VolumeIndex& volume, std::u16string_view fileSystem) {
  const std::scoped_lock lock(volume.nameLock);
  return volume.fileSystem == fileSystem;
}

bool IsNtfs(const VolumeIndex& volume) { return HasFileSystem(volume, kNtfs); }

void ResetVolumeTables(VolumeIndex& volume) {
  ++volume.builds;
  volume.records.clear();
  volume.recordsRead = 0;
  ResetNamePool(volume.names);
  ResetNamePool(volume.renamed);
  ResetFrnTable(volume.frnToIndex);
  volume.inDoubt = {};
  volume.deletedCount = 0;
  volume.apartCount = 0;
  volume.hidden = {};
  volume.apart = {};
  volume.initials = {};
  volume.signatures = {};
  {
    const std::scoped_lock lock(volume.attrLock);
    volume.attrs = {};
  }
  {
    const std::scoped_lock lock(volume.mftSizesLock);
    volume.mftSizes = {};
  }
  {
    const std::scoped_lock lock(volume.folderSizesLock);
    volume.folderSizes = {};
  }
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

size_t MemoryOf(const VolumeIndex& volume) {
  size_t bytes = volume.records.MemoryBytes() + MemoryOf(volume.names) + MemoryOf(volume.renamed) +
                 MemoryOf(volume.frnToIndex) + MemoryOf(volume.signatures);
  for (const RecordBits* bits : {&volume.hidden, &volume.apart, &volume.initials}) {
    bytes += bits->words.capacity() * sizeof(bits->words[0]);
  }
  return bytes;
}

}  // namespace quilmark
