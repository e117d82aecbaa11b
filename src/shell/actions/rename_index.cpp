#include "shell/actions/rename_index.h"

#include <mutex>
#include <utility>

#include "platform/background.h"
#include "search/attributes/attr_jobs.h"
#include "search/results/glance.h"

namespace quilmark {

namespace {

// indexLock held exclusively.
void RenameIfStillThere(const RenameTarget& target, const std::u16string& name) {
  VolumeIndex& volume = *target.volume;
  // A volume that is being built, or was built meanwhile, finds the name by itself.
  if (volume.builds != target.build || target.index >= volume.records.size()) return;
  const FileRecord& record = volume.records[target.index];
  const bool isSame = !record.deleted && record.frn == target.frn &&
                      record.parentFrn == target.parentFrn && IsNameAsSeen(volume, record, target.name);
  if (isSame) RenameRecord(volume, target.index, target.parentFrn, name);
}

}  // namespace

std::optional<RenameTarget> SeeForRename(const MatchItem& hit) {
  if (hit.volume == nullptr) return std::nullopt;
  const auto lock = LockForGlance(*hit.volume);
  if (!lock || hit.index >= hit.volume->records.size()) return std::nullopt;
  const FileRecord& record = hit.volume->records[hit.index];
  if (record.deleted) return std::nullopt;
  return RenameTarget{
      hit.volume,      hit.index, record.frn, hit.volume->builds, SeeName(*hit.volume, record),
      record.parentFrn};
}

void RenameInIndex(const RenameTarget& target, std::u16string name) {
  if (!IsSearchable(*target.volume)) return;
  {
    const std::unique_lock lock(target.volume->indexLock, std::try_to_lock);
    if (lock) return RenameIfStillThere(target, name);
  }
  // A search over millions of names holds the lock, and the interface thread must not wait for that.
  RunBackground("rename_in_index", [target, name = std::move(name)] {
    {
      const std::scoped_lock lock(target.volume->indexLock);
      RenameIfStillThere(target, name);
    }
    TellAttributesChanged();
  });
}

}  // namespace quilmark
