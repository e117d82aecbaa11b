#include "search/attributes/attr_replay.h"

#include <algorithm>
#include <shared_mutex>

#include "index/follow/data_changes.h"

namespace quilmark {

namespace {

std::shared_ptr<VolumeDevice> DeviceOf(const VolumeIndex& volume) {
  return volume.follower.Device();
}

// That of the journal which the cache names, where the letter has had several.
const AttrPosition* PositionFor(const std::vector<AttrPosition>& positions, const CachedVolume& cached) {
  const AttrPosition* byLetter = nullptr;
  for (const AttrPosition& each : positions) {
    if (each.letter != cached.letter) continue;
    if (each.journalId == cached.journalId) return &each;
    byLetter = &each;
  }
  return byLetter;
}

// What changed since is not known: rows show the entries until their files have been asked anew.
void Doubt(CachedVolume& cached) {
  for (auto& [frn, entry] : cached.entries) entry.stale = true;
}

std::optional<DataChanges> ChangesSince(const VolumeIndex& volume, const AttrPosition& position) {
  const auto device = DeviceOf(volume);
  if (device == nullptr || position.journalId != volume.journalId) return std::nullopt;
  return ReadDataChanges(*device, position.journalId, position.usn);
}

}  // namespace

std::optional<AttrPosition> PositionOf(const VolumeIndex& volume) {
  if (DeviceOf(volume) == nullptr) return std::nullopt;
  const AttrPosition position{
      .letter = volume.drive[0], .journalId = volume.journalId, .usn = volume.dataWatch.believedUsn};
  // Asked last: a build that has begun by now may have changed one of the two already.
  if (volume.busy) return std::nullopt;
  return position;
}

std::optional<AttrReplay> LeaveOutChanged(VolumeIndex& volume, CachedVolume& cached,
                                          const std::vector<AttrPosition>& positions) {
  const AttrPosition* const position = PositionFor(positions, cached);
  if (position == nullptr) {
    if (DeviceOf(volume) != nullptr) Doubt(cached);
    return std::nullopt;
  }
  const auto changes = ChangesSince(volume, *position);
  if (!changes) {
    cached.entries.clear();
    return std::nullopt;
  }
  std::erase_if(cached.entries, [&](const auto& entry) {
    return std::binary_search(changes->frns.begin(), changes->frns.end(), entry.first);
  });
  return AttrReplay{.volume = &volume, .usn = changes->usn};
}

void MarkChangedSince(const AttrReplay& replay) {
  const AttrPosition position{.journalId = replay.volume->journalId, .usn = replay.usn};
  const auto changes = ChangesSince(*replay.volume, position);
  if (changes) {
    MarkStale(*replay.volume, changes->frns);
  } else {
    MarkAllStale(*replay.volume);
  }
}

}  // namespace quilmark
