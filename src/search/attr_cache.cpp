#include "search/attr_cache.h"

#include <algorithm>
#include <chrono>
#include <mutex>
#include <optional>
#include <shared_mutex>

#include "config/attr_counters.h"
#include "index/search_engine.h"
#include "platform/file_facts.h"
#include "platform/file_reference.h"

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

bool CopyEntry(const VolumeIndex& volume, uint64_t frn, AttrEntry& out) {
  const auto found = volume.attrs.find(frn);
  if (found == volume.attrs.end() || !found->second.valid) return false;
  out = found->second;
  return true;
}

// attrLock held.
void PeekAttrsLocked(const VolumeIndex& volume, std::span<const uint64_t> frns,
                     std::span<AttrEntry> out) {
  for (size_t i = 0; i < frns.size(); ++i) {
    if (frns[i] == 0 || !CopyEntry(volume, frns[i], out[i])) out[i] = {};
  }
}

bool HasDates(const AttrEntry& entry) { return entry.modified != 0 || entry.created != 0; }

std::optional<FileRecord> CopyRecord(const VolumeIndex& volume, uint32_t index) {
  const std::shared_lock lock(volume.indexLock);
  if (index >= volume.records.size()) return std::nullopt;
  return volume.records[index];
}

// Still the file that its path led to: a name that arrives later stands elsewhere. indexLock held.
bool IsStillThere(const VolumeIndex& volume, uint32_t index, const FileRecord& before) {
  if (index >= volume.records.size()) return false;
  const FileRecord& now = volume.records[index];
  return !now.deleted && now.frn == before.frn && now.name == before.name &&
         now.parentFrn == before.parentFrn;
}

// attrLock held exclusively.
void StoreLocked(VolumeIndex& volume, uint64_t frn, const AttrEntry& entry) {
  const auto held = volume.attrs.find(frn);
  if (held != volume.attrs.end()) {
    if (held->second.size != entry.size) volume.folderSizesDirty = true;
    held->second = entry;
  } else {
    if (volume.attrs.size() >= kMostAttrEntries) return;
    if (entry.size > 0) volume.folderSizesDirty = true;
    volume.attrs.emplace(frn, entry);
  }
  ++AttrCacheGeneration;
}

// Keeps what was read, unless the journal has told of a change to the file meanwhile: it would come back
// after its entry was dropped. An entry without dates never takes the place of a fuller one.
void StoreFilled(VolumeIndex& volume, uint32_t index, const FileRecord& record, const AttrEntry& entry) {
  const std::shared_lock indexLock(volume.indexLock);
  if (!IsStillThere(volume, index, record)) return;
  const auto lock = TimedLock<std::unique_lock<OrderedLock>>(volume.attrLock);
  AttrEntry held;
  const bool isFuller = !HasDates(entry) && CopyEntry(volume, record.frn, held) && HasDates(held);
  if (!isFuller) StoreLocked(volume, record.frn, entry);
}

bool TakeMftSize(const VolumeIndex& volume, uint64_t frn, AttrEntry& out) {
  MftSize size;
  if (!LookupMftSize(volume, frn, size)) return false;
  out.size = static_cast<int64_t>(size.logical);
  out.valid = true;
  return true;
}

void FillFromDisk(const VolumeIndex& volume, uint32_t index, uint64_t frn, AttrEntry& out) {
  const std::u16string path = BuildPathLocked(volume, index);
  std::optional<FileFacts> facts;
  if (!path.empty()) {
    ++AttrCounters().diskReads;
    facts = ReadFileFacts(path);
  }
  if (facts) {
    out = {.size = static_cast<int64_t>(facts->size),
           .modified = facts->modified,
           .created = facts->created,
           .valid = true};
    return;
  }
  if (!TakeMftSize(volume, frn, out) && !out.valid) out.size = 0;
  out.valid = true;
}

void Fill(VolumeIndex& volume, uint32_t index, AttrEntry& out, Insist insist) {
  const auto record = CopyRecord(volume, index);
  if (!record) return;
  const bool isHeld = LookupAttr(volume, record->frn, out);
  if (isHeld && (HasDates(out) || insist == Insist::kNo)) return;
  const bool takesScan = !isHeld && insist == Insist::kNo;
  if (!takesScan || !TakeMftSize(volume, record->frn, out)) {
    FillFromDisk(volume, index, record->frn, out);
  }
  StoreFilled(volume, index, *record, out);
}

}  // namespace

bool LookupAttr(const VolumeIndex& volume, uint64_t frn, AttrEntry& out) {
  const auto lock = TimedLock<std::shared_lock<OrderedLock>>(volume.attrLock);
  const bool isHit = CopyEntry(volume, frn, out);
  ++(isHit ? AttrCounters().hits : AttrCounters().misses);
  return isHit;
}

bool PeekAttr(const VolumeIndex& volume, uint64_t frn, AttrEntry& out) {
  const std::shared_lock lock(volume.attrLock);
  return CopyEntry(volume, frn, out);
}

void PeekAttrs(const VolumeIndex& volume, std::span<const uint64_t> frns, std::span<AttrEntry> out) {
  const std::shared_lock lock(volume.attrLock);
  PeekAttrsLocked(volume, frns, out);
}

void LookupAttrs(const VolumeIndex& volume, std::span<const uint64_t> frns, std::span<AttrEntry> out) {
  uint64_t hits = 0, misses = 0;
  const auto lock = TimedLock<std::shared_lock<OrderedLock>>(volume.attrLock);
  PeekAttrsLocked(volume, frns, out);
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

bool LookupMftSize(const VolumeIndex& volume, uint64_t frn, MftSize& out) {
  const std::shared_lock lock(volume.mftSizesLock);
  if (volume.mftSizes.empty()) return false;
  auto found = volume.mftSizes.find(frn);
  if (found == volume.mftSizes.end()) found = volume.mftSizes.find(RecordNumberOf(frn));
  if (found == volume.mftSizes.end()) return false;
  out = found->second;
  return true;
}

void EnsureFileAttributes(VolumeIndex* volume, uint32_t index, AttrEntry& out, Insist insist) {
  if (volume == nullptr || !volume->valid) return;
  ++AttrCounters().hydrateCalls;
  const auto start = Clock::now();
  Fill(*volume, index, out, insist);
  AttrCounters().hydrateMicros += MicrosSince(start);
}

}  // namespace quilmark
