#include "search/attributes/attr_cache.h"

#include <algorithm>
#include <chrono>
#include <mutex>
#include <optional>
#include <shared_mutex>
#include <utility>

#include "config/attr_counters.h"
#include "index/engine/search_engine.h"
#include "index/tables/tidy_names.h"
#include "platform/file_facts.h"
#include "platform/file_reference.h"
#include "search/results/glance.h"

namespace quilmark {

namespace {

using Clock = std::chrono::steady_clock;

uint64_t MicrosSince(Clock::time_point start) {
  return static_cast<uint64_t>(
      std::chrono::duration_cast<std::chrono::microseconds>(Clock::now() - start).count());
}

// A lock that is free costs no look at the clock.
template <typename Lock>
Lock TimedLock(OrderedLock& lock) {
  Lock held(lock, std::try_to_lock);
  if (held.owns_lock()) return held;
  const auto start = Clock::now();
  held.lock();
  AttrCounters().lockWaitMicros += MicrosSince(start);
  return held;
}

// attrLock held.
std::optional<AttrEntry> CopyEntry(const VolumeIndex& volume, uint64_t frn) {
  const auto found = volume.attrs.find(frn);
  if (found == volume.attrs.end() || !found->second.valid || found->second.stale) return std::nullopt;
  return found->second;
}

// attrLock held.
void PeekAttrsLocked(const VolumeIndex& volume, std::span<const uint64_t> frns, std::span<AttrEntry> out,
                     Stale stale) {
  for (size_t i = 0; i < frns.size(); ++i) {
    const auto found = frns[i] == 0 ? volume.attrs.end() : volume.attrs.find(frns[i]);
    const bool isGiven = found != volume.attrs.end() && found->second.valid &&
                         (stale == Stale::kAsItWas || !found->second.stale);
    out[i] = isGiven ? found->second : AttrEntry{};
  }
}

bool HasDates(const AttrEntry& entry) { return entry.modified != 0 || entry.created != 0; }

// The file of a record as it was when somebody looked.
struct Sighting {
  uint32_t index = 0;
  uint64_t frn = 0;
  uint64_t build = 0;  // VolumeIndex::builds
  uint32_t look = 0;   // DataWatch::looks
  SeenName name;
  uint64_t parentFrn = 0;
};

std::optional<Sighting> See(const VolumeIndex& volume, uint32_t index) {
  const std::shared_lock lock(volume.indexLock);
  if (index >= volume.records.size()) return std::nullopt;
  const FileRecord& record = volume.records[index];
  return Sighting{
      index,           record.frn, volume.builds, volume.dataWatch.looks, SeeName(volume, record),
      record.parentFrn};
}

// REQUIRES indexLock held.
bool IsStillThere(const VolumeIndex& volume, const Sighting& seen) {
  if (volume.builds != seen.build || seen.index >= volume.records.size()) return false;
  const FileRecord& record = volume.records[seen.index];
  return !record.deleted && record.frn == seen.frn && record.parentFrn == seen.parentFrn &&
         IsNameAsSeen(volume, record, seen.name);
}

// Empty where another file has the place by now.
std::u16string PathOf(const VolumeIndex& volume, const Sighting& seen) {
  const std::shared_lock lock(volume.indexLock);
  return volume.builds == seen.build ? BuildPath(volume, seen.index) : std::u16string();
}

// attrLock held exclusively. What takes the place of a stale entry is no reason to save: of a file that
// is written to all the time the whole cache would be, for ever, and the next start leaves the former
// out.
void StoreLocked(VolumeIndex& volume, uint64_t frn, const AttrEntry& entry) {
  const auto held = volume.attrs.find(frn);
  if (held != volume.attrs.end()) {
    if (held->second.size != entry.size) volume.folderSizesDirty = true;
    const bool wasStale = std::exchange(held->second, entry).stale;
    if (wasStale) return;
  } else {
    if (volume.attrs.size() >= kMostAttrEntries) return;
    if (entry.size > 0) volume.folderSizesDirty = true;
    volume.attrs.emplace(frn, entry);
  }
  ++AttrCacheGeneration;
}

enum class Source { kScan, kDisk };

// What the disk says takes the place of everything but an entry that has dates where it has none; a scan
// also leaves those alone that are stale, which keep their dates for the screen.
bool IsFuller(const AttrEntry& held, const AttrEntry& entry, Source source) {
  return HasDates(held) && !HasDates(entry) && (!held.stale || source == Source::kScan);
}

// Nothing is stored of a record that went away while the disk was asked, since its number may be another
// file's by now.
void StoreSighting(VolumeIndex& volume, const Sighting& seen, AttrEntry entry, Source source) {
  entry.look = seen.look;
  const std::shared_lock lock(volume.indexLock);
  if (!IsStillThere(volume, seen)) return;
  const auto attrLock = TimedLock<std::unique_lock<OrderedLock>>(volume.attrLock);
  const auto held = volume.attrs.find(seen.frn);
  if (held != volume.attrs.end() && held->second.valid) {
    if (IsFuller(held->second, entry, source)) return;
    if (IsSameAttr(held->second, entry) && !held->second.stale) {
      held->second.look = std::max(held->second.look, entry.look);
      return;
    }
  }
  StoreLocked(volume, seen.frn, entry);
}

bool TakeMftSize(const VolumeIndex& volume, uint64_t frn, AttrEntry& out) {
  const auto size = LookupMftSize(volume, frn);
  if (!size) return false;
  out.size = static_cast<int64_t>(size->logical);
  out.valid = true;
  return true;
}

// Null where another file has the place by now, and where the volume has no device.
std::shared_ptr<VolumeDevice> DeviceOf(const VolumeIndex& volume, const Sighting& seen) {
  const std::shared_lock lock(volume.indexLock);
  if (volume.builds != seen.build) return nullptr;
  return volume.follower.Device();
}

// By the volume's own records where its device reads them: an image has no paths. Else by the path.
std::optional<FileFacts> ReadFacts(const VolumeIndex& volume, const Sighting& seen) {
  const auto device = DeviceOf(volume, seen);
  auto facts = device != nullptr ? device->ReadFacts(FileReference(seen.frn)) : std::nullopt;
  const std::u16string path = facts ? std::u16string() : PathOf(volume, seen);
  if (facts || !path.empty()) ++AttrCounters().diskReads;
  if (!path.empty()) facts = ReadFileFacts(path);
  return facts;
}

void FillFromDisk(const VolumeIndex& volume, const Sighting& seen, AttrEntry& out) {
  if (const auto facts = ReadFacts(volume, seen)) {
    out = {.size = static_cast<int64_t>(facts->size),
           .modified = facts->modified,
           .created = facts->created,
           .valid = true};
    return;
  }
  if (!TakeMftSize(volume, seen.frn, out) && !out.valid) out.size = 0;
  out.valid = true;
}

void Fill(VolumeIndex& volume, uint32_t index, AttrEntry& out, Insist insist) {
  const auto seen = See(volume, index);
  if (!seen) return;
  const auto held = LookupAttr(volume, seen->frn);
  if (held) out = *held;
  if (held && (HasDates(out) || insist == Insist::kNo)) return;
  const bool takesScan = !held && insist == Insist::kNo;
  const bool isOfScan = takesScan && TakeMftSize(volume, seen->frn, out);
  if (!isOfScan) FillFromDisk(volume, *seen, out);
  StoreSighting(volume, *seen, out, isOfScan ? Source::kScan : Source::kDisk);
}

}  // namespace

std::optional<AttrEntry> LookupAttr(const VolumeIndex& volume, uint64_t frn) {
  const auto lock = TimedLock<std::shared_lock<OrderedLock>>(volume.attrLock);
  const auto entry = CopyEntry(volume, frn);
  ++(entry ? AttrCounters().hits : AttrCounters().misses);
  return entry;
}

std::optional<AttrEntry> PeekAttr(const VolumeIndex& volume, uint64_t frn) {
  const std::shared_lock lock(volume.attrLock);
  return CopyEntry(volume, frn);
}

void PeekAttrs(const VolumeIndex& volume, std::span<const uint64_t> frns, std::span<AttrEntry> out,
               Stale stale) {
  const std::shared_lock lock(volume.attrLock);
  PeekAttrsLocked(volume, frns, out, stale);
}

void LookupAttrs(const VolumeIndex& volume, std::span<const uint64_t> frns, std::span<AttrEntry> out) {
  uint64_t hits = 0, misses = 0;
  const auto lock = TimedLock<std::shared_lock<OrderedLock>>(volume.attrLock);
  PeekAttrsLocked(volume, frns, out, Stale::kAsNone);
  for (size_t i = 0; i < frns.size(); ++i) {
    if (frns[i] != 0) ++(out[i].valid ? hits : misses);
  }
  AttrCounters().hits += hits;
  AttrCounters().misses += misses;
}

void StoreAttr(VolumeIndex& volume, uint64_t frn, const AttrEntry& entry) {
  const auto lock = TimedLock<std::unique_lock<OrderedLock>>(volume.attrLock);
  StoreLocked(volume, frn, entry);
}

std::optional<AttrGlance> GlanceAtAttr(const VolumeIndex& volume, uint64_t frn) {
  const auto lock = LockAttrsForGlance(volume);
  if (!lock) return std::nullopt;
  AttrGlance glance{.hasRoom = volume.attrs.size() < kMostAttrEntries};
  const auto found = volume.attrs.find(frn);
  if (found != volume.attrs.end()) glance.entry = found->second;
  return glance;
}

bool GlanceAtAttrs(const VolumeIndex& volume, std::span<const uint64_t> frns, std::span<AttrEntry> out) {
  const auto lock = LockAttrsForGlance(volume);
  if (lock) PeekAttrsLocked(volume, frns, out, Stale::kAsItWas);
  return lock.owns_lock();
}

bool IsSameAttr(const AttrEntry& one, const AttrEntry& other) {
  return one.size == other.size && one.modified == other.modified && one.created == other.created &&
         one.valid == other.valid;
}

std::optional<MftSize> LookupMftSize(const VolumeIndex& volume, uint64_t frn) {
  const std::shared_lock lock(volume.mftSizesLock);
  if (volume.mftSizes.empty()) return std::nullopt;
  auto found = volume.mftSizes.find(frn);
  if (found == volume.mftSizes.end()) found = volume.mftSizes.find(RecordNumberOf(frn));
  if (found == volume.mftSizes.end()) return std::nullopt;
  return found->second;
}

void EnsureFileAttributes(VolumeIndex* volume, uint32_t index, AttrEntry& out, Insist insist) {
  if (volume == nullptr || !volume->valid) return;
  ++AttrCounters().hydrateCalls;
  const auto start = Clock::now();
  Fill(*volume, index, out, insist);
  AttrCounters().hydrateMicros += MicrosSince(start);
}

}  // namespace quilmark
