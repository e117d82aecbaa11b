// The tables of one volume, and the few functions that edit them.
//
// indexLock guards everything of the upper part of VolumeIndex. Readers of a search take it by
// try_lock_shared and leave the volume out if that fails; writers (build, walk, monitor) hold it
// exclusively. Every edit goes through the functions below, which keep the search aids (bits,
// signatures) in step with the records.
#pragma once

#include <boost/unordered/unordered_flat_map.hpp>

#include <array>
#include <atomic>
#include <cstdint>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "index/device/volume_follower.h"
#include "index/tables/file_record.h"
#include "index/tables/frn_table.h"
#include "index/tables/name_pool.h"
#include "index/tables/name_signatures.h"
#include "index/tables/record_bits.h"
#include "index/tables/record_store.h"
#include "platform/clock.h"
#include "platform/locks.h"
#include "platform/window_post.h"

namespace quilmark {

// Message: a drive letter vanished, or a monitor lost its device.
inline constexpr uint32_t WM_VOLUME_LOST = 1032;

// The first reference of a walked volume's records.
inline constexpr uint64_t kFirstSyntheticFrn = 0x100000;

// What the attribute cache holds of one file.
struct AttrEntry {
  int64_t size = 0;  // bytes
  FileTime modified = 0;
  FileTime created = 0;
  bool valid = false;  // the entry carries data
  bool stale = false;  // the file has changed since: only a row on screen still shows the entry
  uint32_t look = 0;   // DataWatch::looks when the file was asked
};
static_assert(sizeof(AttrEntry) == 32, "up to two millions a volume");

// Goes up whenever an entry of any volume is dropped or replaced. Process-wide, as the file is to which
// all of them are saved; any thread.
inline std::atomic<uint64_t> AttrCacheGeneration = 0;

// Sizes of one file as a scan of the file table, or the monitor since, has found them.
struct MftSize {
  uint64_t logical = 0, allocated = 0;  // bytes
};
static_assert(sizeof(MftSize) == 16, "one a file");

// Values by file reference.
template <typename Value>
using FrnMap = boost::unordered_flat_map<uint64_t, Value>;

// Names that arrived after their record, with search aids of their own, so that a search runs over them
// as it does over the names that stand in their own place. `hidden` and `initials` have one bit a text.
struct RenamedNames {
  NamePool pool{.chunkCapacity = 262'144};  // 512 KiB: most volumes see few renames
  std::vector<uint32_t> owners;             // the record of each text
  RecordBits hidden;                        // the record is deleted, or has got yet another name
  RecordBits initials;
  NameSignatures signatures;
};

// Where TidyNames (tidy_names.h) is.
struct Tidying {
  bool isUnderWay = false;
  size_t nextChunk = 0;  // of VolumeIndex::names
  uint32_t moves = 0;    // how often names have moved
};

// Names that hold a NUL, which would shift every later text of a pool that is scanned as one.
struct OddNames {
  NamePool pool;
  std::vector<uint32_t> records;  // that have or had such a name
};

// Records below folders that the program has deleted (presumed_gone.h), by reference.
struct PresumedGone {
  FrnMap<uint64_t> with;                // of each record, the folder that it was marked with
  FrnMap<std::vector<uint64_t>> below;  // of each such folder, the records
};

// One change that the journal reported, after it was applied.
struct VolumeChange {
  enum Kind { kCreated, kDeleted, kRenamed, kMoved };
  Kind kind = kCreated;
  bool isDirectory = false;
  std::u16string path;
  std::u16string formerPath;  // of what was renamed or moved
};

// The second reader of the journal (data_changes.h). Of the monitor's thread, but for the atomics.
struct DataWatch {
  int64_t usn = 0;                       // where the next look begins
  uint32_t turns = 0;                    // of the monitor since the watch began
  std::vector<uint64_t> changed;         // what the last look found
  std::atomic<uint32_t> looks = 0;       // how many have found something
  std::atomic<int64_t> believedUsn = 0;  // all changes below it are taken in
};

// Whom a volume tells of what happens to it. Set before its first build.
struct VolumeListeners {
  PostTarget window = nullptr;  // of WM_VOLUME_LOST, and of what others want with the device
  void (*attributesBecameStale)() = nullptr;  // called by the monitor where entries became stale
};

// Its end stops the monitor and closes the device (VolumeFollower).
struct VolumeIndex {
  VolumeIndex() = default;
  VolumeIndex(const VolumeIndex&) = delete;
  VolumeIndex& operator=(const VolumeIndex&) = delete;

  std::u16string drive;       // "X:", upper-case
  std::u16string fileSystem;  // nameLock: "NTFS", or the name that the system reports
  mutable OrderedLock nameLock{LockRank::kLeaf, "nameLock"};  // a build may give another name
  std::atomic<bool> valid = true;
  std::atomic<uint32_t> busy = 0;  // builds that run or wait: searches skip the volume
  VolumeListeners listeners;

  std::atomic<uint64_t> builds = 0;  // how often the tables were emptied; changes under indexLock alone
  uint64_t edits = 0;                // indexLock; of records, as whoever let go of the lock compares
  std::atomic<uint32_t> recordsRead = 0;  // by the build that runs, for whoever shows its progress

  mutable OrderedLock indexLock{LockRank::kIndex, "indexLock"};
  RecordStore records;
  NamePool names;  // text n belongs to record n, for good: the scan counts on it
  std::array<RenamedNames, 2> renamed;
  uint8_t renamedInto = 0;  // the one that takes new names, while those of the other get their own place
  Tidying tidying;
  OddNames odd;
  FrnTable frnToIndex;
  uint64_t deletedCount = 0;
  std::atomic<uint64_t> journalId = 0;  // read without the lock too: by a save, which waits for no build
  int64_t nextUsn = 0;
  PresumedGone presumedGone;
  FrnMap<uint8_t> inDoubt;  // written by the monitor; files that may be gone, and asks to go
  // Search aids, one bit or a few a record.
  RecordBits hidden;    // text n of `names` is not to be believed: deleted, or apart
  RecordBits apart;     // the record's name stands in `renamed` or `odd`
  RecordBits initials;  // text n of `names` has a key of initials (initial_letters.h)
  uint64_t apartCount = 0;
  NameSignatures signatures;

  // Set before the build; called by the monitor with indexLock held exclusively. Paths are only built
  // where somebody listens.
  std::function<void(const VolumeChange&)> onChange;

  DataWatch dataWatch;
  mutable OrderedLock attrLock{LockRank::kAttributes, "attrLock"};
  FrnMap<AttrEntry> attrs;
  mutable OrderedLock mftSizesLock{LockRank::kAttributes, "mftSizesLock"};
  FrnMap<MftSize> mftSizes;
  mutable OrderedLock folderSizesLock{LockRank::kAttributes, "folderSizesLock"};
  std::mutex folderSizesBuild;   // held over a walk that makes them; taken before any other lock
  FrnMap<uint64_t> folderSizes;  // bytes below a folder
  std::atomic<bool> folderSizesDirty = true;

  std::atomic<uint64_t> nextSyntheticFrn = kFirstSyntheticFrn;  // of the next record of a walk

  VolumeFollower follower;  // last: its thread, which edits the tables, ends before they do
};

// What is known of a file when its record is made.
struct NewRecord {
  uint64_t frn = 0;
  uint64_t parentFrn = 0;
  bool isDirectory = false;
};

// Stores the name and appends a record for it; returns its index. frnToIndex is left alone, so that a
// build can fill it once at the end. indexLock held exclusively. std::bad_alloc where memory runs out;
// the tables are then as before. A name is cut after 65,535 units.
uint32_t AppendRecord(VolumeIndex& volume, const NewRecord& record, std::u16string_view name);

// Gives the record another name and parent, and life if it was deleted. A record that has them already,
// as a created file has at its later journal records, keeps its text and with it its signatures.
// indexLock held exclusively. std::bad_alloc where memory runs out; the record is then as before.
void RenameRecord(VolumeIndex& volume, uint32_t index, uint64_t parentFrn, std::u16string_view name);

// Flags the record; no effect on one that is flagged already. indexLock held exclusively.
void MarkDeleted(VolumeIndex& volume, uint32_t index);

// Counts in `busy` for its own lifetime. A build has one by way of VolumeBuild (build/volume_build.h).
class BusyMark {
 public:
  explicit BusyMark(VolumeIndex& volume) : volume_(volume) { ++volume_.busy; }
  ~BusyMark() { --volume_.busy; }
  BusyMark(const BusyMark&) = delete;
  BusyMark& operator=(const BusyMark&) = delete;

 private:
  VolumeIndex& volume_;
};

// Sets `drive` and `fileSystem`; leaves a drive alone that is the same already, since the list of
// volumes is searched by it without this lock. indexLock held exclusively; takes nameLock.
void NameVolume(VolumeIndex& volume, std::u16string_view drive, std::u16string_view fileSystem);

// Whether the volume has that name of a file system, letter by letter. Any thread; takes nameLock.
[[nodiscard]] bool HasFileSystem(const VolumeIndex& volume, std::u16string_view fileSystem);

// Whether the volume is read by its records, and not by a walk. Any thread; takes nameLock.
[[nodiscard]] bool IsNtfs(const VolumeIndex& volume);

// Empties every table and map of the volume, with what it has in memory. indexLock held exclusively;
// takes the three attribute locks one after another.
void ResetVolumeTables(VolumeIndex& volume);

// What an index leads to.
struct RecordKind {
  uint64_t frn = 0;
  bool isDirectory = false;
  bool isDeleted = false;
};

// Empty for an index past the end. indexLock held, shared or exclusive.
[[nodiscard]] std::optional<RecordKind> KindOf(const VolumeIndex& volume, uint32_t index);

// KindOf with indexLock taken shared around it; waits for a build.
[[nodiscard]] std::optional<RecordKind> KindOfLocked(const VolumeIndex& volume, uint32_t index);

// Full path by following parents, at most 100 steps: "X:\dir\name". indexLock held, shared or exclusive.
// An index past the end gives the bare "X:"; a chain that breaks or is deeper gives its known, innermost
// part.
[[nodiscard]] std::u16string BuildPath(const VolumeIndex& volume, uint32_t index);

// BuildPath with indexLock taken shared around it; waits for a build.
std::u16string BuildPathLocked(const VolumeIndex& volume, uint32_t index);

// BuildPath into `path`, a string that a loop uses again; what was in it goes. indexLock held, shared or
// exclusive.
void BuildPathInto(const VolumeIndex& volume, uint32_t index, std::u16string& path);

// Bytes that the tables take, attribute maps left out. indexLock held.
size_t MemoryOf(const VolumeIndex& volume);

// Empty if every invariant of the tables holds, else the first that does not. Slow, for tests and debug
// builds. indexLock held, shared or exclusive.
[[nodiscard]] std::string FindBrokenInvariant(const VolumeIndex& volume);

}  // namespace quilmark
