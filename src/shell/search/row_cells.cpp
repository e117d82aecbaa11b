#include "shell/search/row_cells.h"

#include <optional>
#include <shared_mutex>

#include "search/attributes/attr_cache.h"
#include "search/attributes/folder_sizes.h"
#include "search/results/glance.h"
#include "search/results/search_session.h"
#include "shell/list/cell_text.h"

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
  if (const auto size = GetFolderSize(volume, frn, IfDirty::kLeave)) return SizeText(*size);
  return std::u16string(WereNeverAddedUp(volume) ? kNotKnownYet : kAbsent);
}

std::u16string FileSizeText(const MatchItem& hit, uint64_t frn, const AttrGlance& known) {
  if (known.entry.valid) return SizeText(static_cast<uint64_t>(known.entry.size));
  if (const auto size = LookupMftSize(*hit.volume, frn)) return SizeText(size->logical);
  return std::u16string(known.hasRoom ? kNotKnownYet : kAbsent);
}

std::u16string DateText(const AttrGlance& known, FileTime date) {
  if (known.entry.valid) return TimeText(date);
  return std::u16string(known.hasRoom ? kNotKnownYet : kAbsent);
}

// Turns "..." into "-": attributes of a file that is gone are not asked for.
void TakeDots(std::u16string& cell) {
  if (cell == kNotKnownYet) cell = kAbsent;
}

}  // namespace

RowCells CellsOfRow(const MatchItem& hit) {
  const auto kind = GlanceAt(hit);
  if (!kind) return {};
  const auto known = GlanceAtAttr(*hit.volume, kind->frn);
  if (!known) return {.isLater = IsSearchable(*hit.volume)};
  RowCells cells;
  cells.size =
      kind->isDirectory ? FolderSizeText(*hit.volume, kind->frn) : FileSizeText(hit, kind->frn, *known);
  cells.modified = DateText(*known, known->entry.modified);
  cells.created = DateText(*known, known->entry.created);
  for (std::u16string* const cell : {&cells.size, &cells.modified, &cells.created}) {
    if (kind->isDeleted) TakeDots(*cell);
    cells.isMissing = cells.isMissing || *cell == kNotKnownYet;
  }
  cells.isMissing = cells.isMissing || (known->entry.stale && !kind->isDeleted);
  return cells;
}

}  // namespace quilmark
