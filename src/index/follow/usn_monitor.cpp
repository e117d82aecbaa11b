#include "index/follow/usn_monitor.h"

#include <exception>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

#include "config/log.h"
#include "index/device/journal_read.h"
#include "index/follow/data_changes.h"
#include "index/follow/doubtful_records.h"
#include "index/tables/presumed_gone.h"
#include "index/tables/tidy_names.h"
#include "platform/bytes.h"
#include "platform/file_reference.h"
#include "platform/shutdown.h"
#include "platform/usn_record.h"

namespace quilmark {

MonitorPauses monitorPauses;

namespace {

enum class Outcome { kGoOn, kTryAgain, kEndQuietly, kEndAsLost };

Outcome OutcomeOf(uint32_t error) {
  switch (error) {
    case 0:
      return Outcome::kGoOn;
    case kErrorOperationAborted:
    case kErrorJournalEntryDeleted:
    case kErrorJournalNotActive:
      return Outcome::kEndQuietly;
    case kErrorAccessDenied:
    case kErrorInvalidHandle:
    case kErrorDeviceNotConnected:
      return Outcome::kEndAsLost;
    default:
      return Outcome::kTryAgain;
  }
}

// nextUsn and journalId are written by this thread and by a build, which stops this thread first.
VolumeDevice::Reply ReadJournal(const VolumeIndex& volume, std::span<std::byte> block) {
  const auto device = volume.follower.Device();
  if (device == nullptr) return {.error = kErrorInvalidHandle};
  return ReadJournalFrom(
      *device,
      {.startUsn = volume.nextUsn, .reasonMask = kUsnReasonsOfNames, .usnJournalId = volume.journalId},
      block);
}

// A change as somebody who listens is told of it: the paths before and after.
class ChangeReport {
 public:
  ChangeReport(const VolumeIndex& volume, std::optional<uint32_t> index) : volume_(volume) {
    if (!volume.onChange || !index) return;
    wasAlive_ = !volume.records[*index].deleted;
    formerParent_ = volume.records[*index].parentFrn;
    formerPath_ = BuildPath(volume, *index);
  }

  void TellDeleted(uint32_t index) {
    if (!volume_.onChange || !wasAlive_) return;
    Tell(VolumeChange::kDeleted, index, formerPath_);
  }

  void TellNamed(uint32_t index) {
    if (!volume_.onChange) return;
    std::u16string path = BuildPath(volume_, index);
    if (!wasAlive_) {
      formerPath_.clear();
      Tell(VolumeChange::kCreated, index, std::move(path));
    } else if (path != formerPath_) {
      const bool isMoved = volume_.records[index].parentFrn != formerParent_;
      Tell(isMoved ? VolumeChange::kMoved : VolumeChange::kRenamed, index, std::move(path));
    }
  }

 private:
  void Tell(VolumeChange::Kind kind, uint32_t index, std::u16string path) {
    const bool isDirectory = volume_.records[index].isDirectory;
    if (kind == VolumeChange::kDeleted) formerPath_.clear();
    volume_.onChange({kind, isDirectory, std::move(path), formerPath_});
  }

  const VolumeIndex& volume_;
  bool wasAlive_ = false;
  uint64_t formerParent_ = 0;
  std::u16string formerPath_;
};

std::optional<uint32_t> RecordOf(const VolumeIndex& volume, uint64_t frn) {
  const auto index = IndexOf(volume.frnToIndex, volume.records, frn);
  if (!index || *index == kRootWithoutRecord) return std::nullopt;
  return static_cast<uint32_t>(*index);
}

void ApplyDelete(VolumeIndex& volume, uint64_t frn) {
  if (const auto index = RecordOf(volume, frn)) {
    ChangeReport report(volume, index);
    MarkDeleted(volume, *index);
    report.TellDeleted(*index);
  }
  ConfirmGone(volume, frn);
  ForgetFileAttributes(volume, frn);
}

// A file that is not known is new; one that is known was renamed, moved, or is back.
void ApplyName(VolumeIndex& volume, const UsnRecord& record, std::u16string_view name) {
  auto index = RecordOf(volume, record.frn.value);
  ChangeReport report(volume, index);
  if (index) {
    RenameRecord(volume, *index, record.parentFrn.value, name);
  } else {
    index = AppendRecord(volume,
                         {.frn = record.frn.value,
                          .parentFrn = record.parentFrn.value,
                          .isDirectory = (record.attributes & kFileAttributeDirectory) != 0},
                         name);
    SetIndexOf(volume.frnToIndex, volume.records, record.frn.value, *index);
  }
  WithdrawGone(volume, record.frn.value);
  report.TellNamed(*index);
  ForgetFileAttributes(volume, record.frn.value);
}

// One that came and went under one handle says both, in no order, and ends alive until the volume has
// been asked.
void ApplyRecord(VolumeIndex& volume, const UsnRecord& record, std::u16string& name) {
  const bool isDeleted = (record.reason & kUsnReasonFileDelete) != 0;
  const bool isNamed = (record.reason & (kUsnReasonFileCreate | kUsnReasonRenameNewName)) != 0;
  if (isDeleted) ApplyDelete(volume, record.frn.value);
  if (isNamed) ApplyName(volume, record, NameUnits(record, name));
  if (isDeleted && isNamed) {
    volume.inDoubt[record.frn.value] = kAsksInDoubt;
  } else if (isDeleted || isNamed) {
    volume.inDoubt.erase(record.frn.value);
  }
}

void ApplyRecords(VolumeIndex& volume, std::span<const std::byte> block) {
  std::u16string name;
  const std::unique_lock lock(volume.indexLock);
  UsnCursor cursor{.block = block};
  while (!ShutdownRequested) {
    const auto record = NextUsnRecord(cursor);
    if (!record) break;
    ApplyRecord(volume, *record, name);
  }
  volume.nextUsn = LoadLe<int64_t>(block, 0);
}

void SettleDoubts(VolumeIndex& volume, VolumeDevice& device, std::span<std::byte> scratch,
                  const std::atomic<bool>& wanted) {
  const auto gone = AskWhatIsGone(volume, device, scratch, wanted);
  if (gone.empty()) return;
  const std::unique_lock lock(volume.indexLock);
  for (const uint64_t frn : gone) ApplyDelete(volume, frn);
}

// What comes behind each block, which is no longer needed. A volume that is closed meanwhile is left
// alone.
void AskVolume(VolumeIndex& volume, VolumeDevice::Reply read, std::span<std::byte> block,
               const std::atomic<bool>& wanted) {
  const auto device = wanted ? volume.follower.Device() : nullptr;
  if (device == nullptr) return;
  // Nothing is asked of a device that does not answer, which would use up the turns of what is in doubt.
  if (read.error != 0 || read.bytes < kUsnPositionBytes) return;
  const auto readTo = LoadLe<int64_t>(block, 0);
  SettleDoubts(volume, *device, block, wanted);
  WatchData(volume, *device, readTo, block, wanted);
}

// True if the monitor ends as lost.
bool FollowJournal(VolumeIndex& volume, const std::atomic<bool>& wanted) {
  const auto buffer = std::make_unique<JournalBuffer>();
  const std::span<std::byte> block(buffer->bytes);
  while (wanted && !ShutdownRequested) {
    const auto reply = ReadJournal(volume, block);
    const Outcome outcome = OutcomeOf(reply.error);
    if (outcome == Outcome::kEndQuietly) return false;
    if (outcome == Outcome::kEndAsLost) return true;
    if (outcome == Outcome::kGoOn) ApplyJournalBlock(volume, block.first(reply.bytes));
    AskVolume(volume, reply, block, wanted);
    const bool goesOn = outcome == Outcome::kGoOn;
    volume.follower.Rest(goesOn ? monitorPauses.afterReadMs : monitorPauses.afterErrorMs, wanted);
  }
  return false;
}

// An exception costs this volume, not the program.
bool FollowJournalSafely(VolumeIndex& volume, const std::atomic<bool>& wanted) {
  try {
    return FollowJournal(volume, wanted);
  } catch (const std::exception& error) {
    LogBackgroundThreadException((std::string("usn_monitor: ") + error.what()).c_str());
  } catch (...) {
    LogBackgroundThreadException("usn_monitor");
  }
  return true;
}

}  // namespace

void ApplyJournalBlock(VolumeIndex& volume, std::span<const std::byte> block) {
  if (block.size() <= kUsnPositionBytes) return;
  ApplyRecords(volume, block);
  if (!ShutdownRequested) TidyNames(volume);
}

void ForgetFileAttributes(VolumeIndex& volume, uint64_t frn) {
  {
    const std::scoped_lock lock(volume.attrLock);
    if (volume.attrs.erase(frn) != 0) ++AttrCacheGeneration;
  }
  const std::scoped_lock lock(volume.mftSizesLock);
  if (volume.mftSizes.empty()) return;
  volume.mftSizes.erase(frn);
  volume.mftSizes.erase(RecordNumberOf(frn));  // the table may go by record number
  volume.folderSizesDirty = true;
}

void RunUsnMonitor(VolumeIndex& volume, std::atomic<bool>& wanted) {
  const bool isLost = FollowJournalSafely(volume, wanted);
  // One that was stopped has been told so already, and another may run by now.
  if (wanted.exchange(false)) volume.follower.monitorRunning = false;
  if (!isLost) return;
  volume.valid = false;
  if (!ShutdownRequested) PostIfAlive(volume.listeners.window, WM_VOLUME_LOST, 0, 0);
}

void StartMonitor(VolumeIndex& volume) {
  volume.follower.Start([&volume](std::atomic<bool>& wanted) { RunUsnMonitor(volume, wanted); });
}

void StopMonitor(VolumeIndex& volume) { volume.follower.Stop(); }

}  // namespace quilmark
