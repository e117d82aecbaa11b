#include "index/follow/data_changes.h"

#include <algorithm>
#include <limits>
#include <memory>
#include <mutex>
#include <shared_mutex>
#include <utility>

#include "index/device/file_record_read.h"
#include "index/device/journal_read.h"
#include "platform/bytes.h"
#include "platform/file_facts.h"
#include "platform/file_reference.h"
#include "platform/ntfs/mft_facts.h"
#include "platform/shutdown.h"
#include "platform/usn_record.h"

namespace quilmark {

namespace {

constexpr uint32_t kDataReasons = kUsnReasonDataOverwrite | kUsnReasonDataExtend |
                                  kUsnReasonDataTruncation | kUsnReasonBasicInfoChange;
// The monitor forgets the size of a file at each of its names: it is asked for again.
constexpr uint32_t kSizeReasons = kDataReasons | kUsnReasonFileCreate | kUsnReasonRenameNewName;
constexpr int kMostBlocks = 8;  // a look; the rest is for the next

// Files of journal records, of which a whole journal may have ten millions: it holds at most twice as
// many as there are different ones, and some thousands.
class ChangedFiles {
 public:
  void Add(uint64_t frn) {
    if (frns_.size() == most_) {
      MakeSet();
      most_ = std::max(kLeast, 2 * frns_.size());
    }
    frns_.push_back(frn);
  }
  // Sorted, each once. Nothing is left.
  std::vector<uint64_t> Take() {
    MakeSet();
    return std::exchange(frns_, {});
  }

 private:
  static constexpr size_t kLeast = 8'192;

  void MakeSet() {
    std::sort(frns_.begin(), frns_.end());
    frns_.erase(std::unique(frns_.begin(), frns_.end()), frns_.end());
  }

  std::vector<uint64_t> frns_;
  size_t most_ = kLeast;
};

// The files of one look.
struct Look {
  ChangedFiles changed;  // data or dates
  ChangedFiles resized;  // those too, and what has a new name
};

// Returns where to read on: behind the block, or at its first record that the monitor has yet to apply,
// which would forget what is taken in here.
int64_t TakeBlock(std::span<const std::byte> block, int64_t readTo, Look& look) {
  UsnCursor cursor{.block = block};
  while (const auto record = NextUsnRecord(cursor)) {
    if (record->usn >= readTo && (record->reason & kUsnReasonsOfNames) != 0) return record->usn;
    if ((record->reason & kDataReasons) != 0) look.changed.Add(record->frn.value);
    look.resized.Add(record->frn.value);
  }
  return LoadLe<int64_t>(block, 0);
}

// The same where only data and dates count.
int64_t TakeBlock(std::span<const std::byte> block, ChangedFiles& changed) {
  UsnCursor cursor{.block = block};
  while (const auto record = NextUsnRecord(cursor)) {
    if ((record->reason & kDataReasons) != 0) changed.Add(record->frn.value);
  }
  return LoadLe<int64_t>(block, 0);
}

// The error of the call that failed, or 0.
uint32_t ReadLook(VolumeIndex& volume, VolumeDevice& device, int64_t readTo,
                  std::span<std::byte> scratch, Look& look) {
  int64_t& usn = volume.dataWatch.usn;
  for (int blocks = 0; blocks < kMostBlocks; ++blocks) {
    const auto reply = ReadJournalFrom(
        device, {.startUsn = usn, .reasonMask = kSizeReasons, .usnJournalId = volume.journalId},
        scratch);
    if (reply.error != 0) return reply.error;
    if (reply.bytes < kUsnPositionBytes) break;
    const int64_t next = TakeBlock(scratch.first(reply.bytes), readTo, look);
    if (next == usn) break;
    usn = next;
  }
  return 0;
}

bool HoldsSizes(const VolumeIndex& volume) {
  const std::shared_lock lock(volume.mftSizesLock);
  return !volume.mftSizes.empty();
}

// indexLock and mftSizesLock held. The table may go by record number.
void PutSize(VolumeIndex& volume, uint64_t frn, const DataSizes& sizes) {
  const auto index = IndexOf(volume.frnToIndex, volume.records, frn);
  if (!index || *index < 0 || volume.records[static_cast<uint32_t>(*index)].deleted) return;
  const bool byNumber = volume.mftSizes.contains(RecordNumberOf(frn));
  MftSize& held = volume.mftSizes[byNumber ? RecordNumberOf(frn) : frn];
  if (held.logical != sizes.logical) volume.folderSizesDirty = true;
  held = {sizes.logical, sizes.allocated};
}

// Empty for a file that is not known, or gone.
std::u16string PathOf(const VolumeIndex& volume, uint64_t frn) {
  const std::shared_lock lock(volume.indexLock);
  const auto index = IndexOf(volume.frnToIndex, volume.records, frn);
  if (!index || *index < 0 || volume.records[static_cast<uint32_t>(*index)].deleted) return {};
  return BuildPath(volume, static_cast<uint32_t>(*index));
}

// Of a file whose own record does not say: a second one holds its $DATA. As much counts as allocated as
// there is.
std::optional<DataSizes> SizesByFacts(const VolumeIndex& volume, VolumeDevice& device, uint64_t frn) {
  auto facts = device.ReadFacts(FileReference(frn));
  const std::u16string path = facts ? std::u16string() : PathOf(volume, frn);
  if (!path.empty()) facts = ReadFileFacts(path);
  return facts ? std::optional(DataSizes{facts->size, facts->size}) : std::nullopt;
}

std::optional<DataSizes> AskForSizes(const VolumeIndex& volume, VolumeDevice& device, uint64_t frn,
                                     std::span<std::byte> scratch) {
  const FileRecordRead read = ReadFileRecord(device, frn, scratch);
  if (read.state != FileState::kThere) return std::nullopt;
  const auto sizes = SizesInRecord(read.record, FileReference(frn));
  return sizes ? sizes : SizesByFacts(volume, device, frn);
}

// One file at a time: the volume is asked without a lock.
void PutNewSizes(VolumeIndex& volume, VolumeDevice& device, std::span<const uint64_t> frns,
                 std::span<std::byte> scratch, const std::atomic<bool>& wanted) {
  if (!HoldsSizes(volume)) return;
  for (const uint64_t frn : frns) {
    if (!wanted) return;
    const auto sizes = AskForSizes(volume, device, frn, scratch);
    if (!sizes) continue;
    const std::shared_lock indexLock(volume.indexLock);
    const std::scoped_lock lock(volume.mftSizesLock);
    PutSize(volume, frn, *sizes);
  }
}

// attrLock held. True if the entry was to be believed until now.
bool MarkEntryStale(VolumeIndex& volume, uint64_t frn, uint32_t askedBefore) {
  const auto found = volume.attrs.find(frn);
  if (found == volume.attrs.end() || found->second.stale || found->second.look >= askedBefore) {
    return false;
  }
  found->second.stale = true;
  return true;
}

size_t MarkStaleBefore(VolumeIndex& volume, std::span<const uint64_t> frns, uint32_t askedBefore) {
  size_t marked = 0;
  if (frns.empty()) return marked;
  const std::scoped_lock lock(volume.attrLock);
  for (const uint64_t frn : frns) marked += MarkEntryStale(volume, frn, askedBefore) ? 1 : 0;
  return marked;
}

// Who asked the disk before the former look was done may have stored since what was true before it.
size_t TakeIn(VolumeIndex& volume, Look look) {
  DataWatch& watch = volume.dataWatch;
  size_t marked = MarkStaleBefore(volume, watch.changed, watch.looks);
  watch.changed = look.changed.Take();
  if (!watch.changed.empty()) {
    ++watch.looks;
    marked += MarkStale(volume, watch.changed);
  }
  return marked;
}

}  // namespace

size_t MarkStale(VolumeIndex& volume, std::span<const uint64_t> frns) {
  return MarkStaleBefore(volume, frns, std::numeric_limits<uint32_t>::max());
}

size_t MarkAllStale(VolumeIndex& volume) {
  size_t marked = 0;
  const std::scoped_lock lock(volume.attrLock);
  for (auto& [frn, entry] : volume.attrs) {
    marked += entry.stale ? 0 : 1;
    entry.stale = true;
  }
  return marked;
}

void BeginDataWatch(VolumeIndex& volume, int64_t usn) {
  volume.dataWatch.usn = usn;
  volume.dataWatch.believedUsn = usn;
  volume.dataWatch.turns = 0;
  volume.dataWatch.changed.clear();
}

void WatchData(VolumeIndex& volume, VolumeDevice& device, int64_t readTo, std::span<std::byte> scratch,
               const std::atomic<bool>& wanted) {
  DataWatch& watch = volume.dataWatch;
  if (++watch.turns % kTurnsALook != 0) return;
  const int64_t from = watch.usn;
  Look look;
  const uint32_t error = ReadLook(volume, device, readTo, scratch, look);
  size_t marked = 0;
  if (error == kErrorJournalEntryDeleted) {  // what changed there is not known
    watch.usn = readTo;
    marked = MarkAllStale(volume);
  }
  // Before anyone who asks from now on may take an old size for a new one.
  PutNewSizes(volume, device, look.resized.Take(), scratch, wanted);
  marked += TakeIn(volume, std::move(look));
  watch.believedUsn = from;
  if (const auto tell = volume.listeners.attributesBecameStale; marked != 0 && tell != nullptr) tell();
}

std::optional<DataChanges> ReadDataChanges(VolumeDevice& device, uint64_t journalId, int64_t usn) {
  const auto buffer = std::make_unique<JournalBuffer>();
  ChangedFiles changed;
  while (!ShutdownRequested) {
    const auto reply = ReadJournalFrom(
        device, {.startUsn = usn, .reasonMask = kDataReasons, .usnJournalId = journalId}, buffer->bytes);
    if (reply.error != 0 || reply.bytes < kUsnPositionBytes) return std::nullopt;
    const int64_t next = TakeBlock(std::span(buffer->bytes).first(reply.bytes), changed);
    if (reply.bytes <= kUsnPositionBytes || next <= usn) {
      return DataChanges{.frns = changed.Take(), .usn = std::max(next, usn)};
    }
    usn = next;
  }
  return std::nullopt;
}

}  // namespace quilmark
