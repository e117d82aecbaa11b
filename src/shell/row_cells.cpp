#include "shell/row_cells.h"

#include <optional>

#include "search/attr_cache.h"
#include "search/folder_sizes.h"
#include "search/search_state.h"
#include "shell/cell_text.h"

namespace quilmark {

namespace {

std::optional<RecordKind> GlanceAt(const MatchItem& hit) {
  if (hit.volume == nullptr) return std::nullopt;
  const auto lock = LockForGlance(*hit.volume);
  return lock ? KindOf(*hit.volume, hit.index) : std::nullopt;
}

bool WereNeverAddedUp(const VolumeIndex& volume) {
  const std::shared_lock lock(volume.folderSizesLock);
  return volume.folderSizes.empty() && volume.folderSizesDirty;
}

std::u16string FolderSizeText(VolumeIndex& volume, uint64_t frn) {
  uint64_t size = 0;
  if (GetFolderSize(volume, frn, size, IfDirty::kLeave)) return SizeText(size);
  return std::u16string(WereNeverAddedUp(volume) ? kNotKnownYet : kAbsent);
}

std::u16string FileSizeText(const MatchItem& hit, uint64_t frn, const AttrEntry* entry) {
  if (entry != nullptr) return SizeText(static_cast<uint64_t>(entry->size));
  MftSize size;
  if (LookupMftSize(*hit.volume, frn, size)) return SizeText(size.logical);
  return std::u16string(HasRoomForAttr(*hit.volume) ? kNotKnownYet : kAbsent);
}

std::u16string DateText(const MatchItem& hit, const AttrEntry* entry, FileTime AttrEntry::*date) {
  if (entry != nullptr) return TimeText(entry->*date);
  return std::u16string(HasRoomForAttr(*hit.volume) ? kNotKnownYet : kAbsent);
}

// What has gone is not asked for.
void TakeDots(std::u16string& cell) {
  if (cell == kNotKnownYet) cell = kAbsent;
}

}  // namespace

RowCells CellsOfRow(const MatchItem& hit) {
  const auto kind = GlanceAt(hit);
  if (!kind) return {};
  AttrEntry held;
  const AttrEntry* const entry = PeekAttr(*hit.volume, kind->frn, held) ? &held : nullptr;
  RowCells cells;
  cells.size =
      kind->isDirectory ? FolderSizeText(*hit.volume, kind->frn) : FileSizeText(hit, kind->frn, entry);
  cells.modified = DateText(hit, entry, &AttrEntry::modified);
  cells.created = DateText(hit, entry, &AttrEntry::created);
  for (std::u16string* const cell : {&cells.size, &cells.modified, &cells.created}) {
    if (kind->isDeleted) TakeDots(*cell);
    cells.isMissing = cells.isMissing || *cell == kNotKnownYet;
  }
  return cells;
}

}  // namespace quilmark
