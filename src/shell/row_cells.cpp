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
  return std::u16string(kNotKnownYet);
}

}  // namespace

RowCells CellsOfRow(const MatchItem& hit) {
  const auto kind = GlanceAt(hit);
  if (!kind) return {};
  AttrEntry entry;
  const bool isHeld = PeekAttr(*hit.volume, kind->frn, entry);
  RowCells cells;
  cells.size = kind->isDirectory ? FolderSizeText(*hit.volume, kind->frn)
                                 : FileSizeText(hit, kind->frn, isHeld ? &entry : nullptr);
  cells.modified = isHeld ? TimeText(entry.modified) : std::u16string(kNotKnownYet);
  cells.created = isHeld ? TimeText(entry.created) : std::u16string(kNotKnownYet);
  cells.isMissing = !isHeld || cells.size == kNotKnownYet;
  return cells;
}

}  // namespace quilmark
