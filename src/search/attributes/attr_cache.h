// Size and dates of files, which the index lacks: kept per volume, filled from the disk on demand.
//
// Any thread. `volume.attrs` is guarded by attrLock, shared for looks.
#pragma once

#include <cstdint>
#include <optional>
#include <span>

#include "index/tables/volume_index.h"

namespace quilmark {

// Entries of one volume; a file beyond them is asked for on the disk each time.
inline constexpr size_t kMostAttrEntries = 2'000'000;

// A copy of the entry, if there is one that carries data and is not stale. Counts a hit or a miss. Waits
// for attrLock.
[[nodiscard]] std::optional<AttrEntry> LookupAttr(const VolumeIndex& volume, uint64_t frn);

// The same without counting.
[[nodiscard]] std::optional<AttrEntry> PeekAttr(const VolumeIndex& volume, uint64_t frn);

// What a stale entry counts as: none, or as it was, where rows are put in order, or counted, by what is
// known.
enum class Stale : uint8_t { kAsNone, kAsItWas };

// PeekAttr for several files under one hold of the lock: out[i] of frns[i], not valid where there is
// none. A frn of 0 is none. REQUIRES an `out` at least as long as `frns`.
void PeekAttrs(const VolumeIndex& volume, std::span<const uint64_t> frns, std::span<AttrEntry> out,
               Stale stale = Stale::kAsNone);

// The same with one hit or miss counted for each file.
void LookupAttrs(const VolumeIndex& volume, std::span<const uint64_t> frns, std::span<AttrEntry> out);

// Adds the entry, or puts it in place of another one; a full cache takes no further file. Raises
// AttrCacheGeneration, but for what takes the place of a stale entry.
void StoreAttr(VolumeIndex& volume, uint64_t frn, const AttrEntry& entry);

// The sizes that a scan of the volume's file table found; empty where it found none. Takes mftSizesLock.
[[nodiscard]] std::optional<MftSize> LookupMftSize(const VolumeIndex& volume, uint64_t frn);

enum class Insist : uint8_t { kNo, kOnDisk };

// What the interface thread sees, which waits a moment for the lock and no longer.
struct AttrGlance {
  AttrEntry entry;      // not valid where there is none; stale: to be shown, and asked for anew
  bool hasRoom = true;  // a file without an entry can get one: the cache is not full
};
// Empty where the lock was not to be had.
[[nodiscard]] std::optional<AttrGlance> GlanceAtAttr(const VolumeIndex& volume, uint64_t frn);

// PeekAttrs, stale entries as they were; false where the lock was not to be had.
[[nodiscard]] bool GlanceAtAttrs(const VolumeIndex& volume, std::span<const uint64_t> frns,
                                 std::span<AttrEntry> out);

// Equal in all that a row shows: not in `stale` and `look`.
bool IsSameAttr(const AttrEntry& one, const AttrEntry& other);

// Fills `out` from the cache, else from the sizes of a scan, else from the disk; kOnDisk wants dates
// too. A file that cannot be read ends with a valid entry all the same, and is not asked for again.
// An entry that says what the cache says already is not stored: it is nothing to paint or to save.
// `out` stays as it is for a record that does not exist.
void EnsureFileAttributes(VolumeIndex* volume, uint32_t index, AttrEntry& out, Insist insist);

}  // namespace quilmark
