#include "platform/ntfs/raw_ntfs_device.h"

#include <algorithm>
#include <atomic>
#include <mutex>
#include <utility>

#include "platform/bytes.h"
#include "platform/file_reference.h"
#include "platform/ntfs/change_journal.h"
#include "platform/ntfs/mft_enumeration.h"
#include "platform/ntfs/mft_facts.h"
#include "platform/ntfs/mft_reader.h"

namespace quilmark {

namespace {

// Structures of winioctl.h: sizes and byte offsets.
constexpr size_t kVolumeDataBytes = 96, kJournalDataBytes = 56;
constexpr size_t kEnumInputBytes = 24, kEnumLowUsn = 8, kEnumHighUsn = 16;
constexpr size_t kReadInputBytes = 40, kReadReasonMask = 8, kReadOnlyOnClose = 12, kReadJournalId = 32;
constexpr size_t kRecordOutputLength = 8, kRecordOutputBytes = 12;

class RawNtfsDevice : public VolumeDevice {
 public:
  explicit RawNtfsDevice(MftReader reader) : reader_(std::move(reader)) {
    reader_.cancelled = &cancelled_;
  }

  Reply Control(uint32_t code, std::span<const std::byte> input, std::span<std::byte> output) override {
    const std::scoped_lock lock(inUse_);
    cancelled_ = false;
    // Behind that line: a Close from here on cancels this call.
    if (isClosed_) return {.error = kErrorInvalidHandle};
    const Reply reply = Dispatch(code, input, output);
    // What a loop found that ended early is no answer, whatever it looks like.
    return cancelled_ ? Reply{.error = kErrorOperationAborted} : reply;
  }

  Reply ReadAt(ByteOffset offset, std::span<std::byte> buffer) override {
    const std::scoped_lock lock(inUse_);
    if (isClosed_) return {.error = kErrorInvalidHandle};
    return {.bytes = reader_.source->ReadAt(offset, buffer)};
  }

  std::optional<FileFacts> ReadFacts(FileReference reference) override {
    const std::scoped_lock lock(inUse_);
    if (isClosed_) return std::nullopt;
    return ReadMftFacts(reader_, reference);
  }

  void Cancel() override { cancelled_ = true; }

  uint32_t Close() override {
    isClosed_ = true;
    Cancel();
    const std::scoped_lock lock(inUse_);
    return 0;
  }

 private:
  Reply Dispatch(uint32_t code, std::span<const std::byte> input, std::span<std::byte> output) {
    switch (code) {
      case kFsctlGetNtfsVolumeData:
        return VolumeData(output);
      case kFsctlGetNtfsFileRecord:
        return FileRecordNear(input, output);
      case kFsctlEnumUsnData:
        return Enumerate(input, output);
      case kFsctlQueryUsnJournal:
        return QueryJournal(output);
      case kFsctlReadUsnJournal:
        return ReadJournal(input, output);
      case kFsctlCreateUsnJournal:
        if (!FindJournal() && !cancelled_) hasEmptyJournal_ = true;
        return {};
      case kFsctlDeleteUsnJournal:
        if (FindJournal()) return {.error = kErrorWriteProtect};
        if (cancelled_) return {.error = kErrorOperationAborted};
        return {.error = std::exchange(hasEmptyJournal_, false) ? 0 : kErrorJournalNotActive};
      default:
        return {.error = kErrorInvalidFunction};
    }
  }

  // NTFS_VOLUME_DATA_BUFFER. Free and reserved clusters, which the boot sector does not tell, stay 0.
  Reply VolumeData(std::span<std::byte> output) const {
    if (output.size() < kVolumeDataBytes) return {.error = kErrorMoreData};
    const NtfsGeometry& geometry = reader_.geometry;
    const auto data = output.first(kVolumeDataBytes);
    std::fill(data.begin(), data.end(), std::byte{0});
    StoreLe(data, 0, geometry.serial);
    StoreLe(data, 8, geometry.sectors);
    StoreLe(data, 16, geometry.Clusters().value);
    StoreLe(data, 40, geometry.sectorBytes);
    StoreLe(data, 44, geometry.clusterBytes);
    StoreLe(data, 48, geometry.recordBytes);
    StoreLe(data, 52, geometry.recordBytes / geometry.clusterBytes);
    StoreLe(data, 56, reader_.mft.initialized);
    StoreLe(data, 64, geometry.mftCluster.value);
    StoreLe(data, 72, geometry.mirrorCluster.value);
    return {.bytes = kVolumeDataBytes};
  }

  // The record asked for, or the nearest one in use below it.
  Reply FileRecordNear(std::span<const std::byte> input, std::span<std::byte> output) {
    if (input.size() < sizeof(uint64_t)) return {.error = kErrorInvalidParameter};
    const size_t recordBytes = reader_.geometry.recordBytes;
    if (output.size() < kRecordOutputBytes + recordBytes) return {.error = kErrorMoreData};
    if (reader_.recordCount == 0) return {.error = kErrorHandleEof};
    const auto record = output.subspan(kRecordOutputBytes, recordBytes);
    const RecordNumber asked = RecordNumberOf(FileReference(LoadLe<uint64_t>(input, 0)));
    RecordNumber number = std::min(asked, RecordNumber(reader_.recordCount - 1));
    for (;; --number.value) {
      if (cancelled_) return {.error = kErrorOperationAborted};
      const auto header = ReadRecord(reader_, number, record);
      if (header && header->inUse) break;
      if (number == RecordNumber(0)) return {.error = kErrorHandleEof};
    }
    StoreLe(output, 0, number.value);
    StoreLe(output, kRecordOutputLength, static_cast<uint32_t>(recordBytes));
    return {.bytes = kRecordOutputBytes + recordBytes};
  }

  Reply Enumerate(std::span<const std::byte> input, std::span<std::byte> output) {
    if (input.size() < kEnumInputBytes) return {.error = kErrorInvalidParameter};
    const bool hasJournal = FindJournal();
    if (!hasJournal && !hasEmptyJournal_) return {.error = kErrorJournalNotActive};
    const MftRange range{.number = RecordNumberOf(FileReference(LoadLe<uint64_t>(input, 0))),
                         .lowUsn = LoadLe<int64_t>(input, kEnumLowUsn),
                         .highUsn = LoadLe<int64_t>(input, kEnumHighUsn),
                         .hasJournal = hasJournal};
    // Each pass begins with the bytes as they are now.
    if (range.number == RecordNumber(0)) enumeration_ = {};
    return EnumerateMft(reader_, enumeration_, range, output);
  }

  Reply QueryJournal(std::span<std::byte> output) {
    if (output.size() < kJournalDataBytes) return {.error = kErrorMoreData};
    if (!RefreshJournal()) return {.error = kErrorReadFault};
    if (!journal_ && !hasEmptyJournal_) return {.error = kErrorJournalNotActive};
    const ChangeJournal journal = journal_ ? *journal_ : EmptyJournal();
    const auto data = output.first(kJournalDataBytes);
    StoreLe(data, 0, journal.id);
    StoreLe(data, 8, journal.firstUsn);
    StoreLe(data, 16, journal.nextUsn);
    StoreLe(data, 24, journal.lowestValidUsn);
    StoreLe(data, 32, INT64_MAX);
    StoreLe(data, 40, journal.maximumBytes);
    StoreLe(data, 48, journal.allocationDelta);
    return {.bytes = kJournalDataBytes};
  }

  Reply ReadJournal(std::span<const std::byte> input, std::span<std::byte> output) {
    if (input.size() < kReadInputBytes) return {.error = kErrorInvalidParameter};
    if (!RefreshJournal()) return {.error = kErrorReadFault};
    if (!journal_ && !hasEmptyJournal_) return {.error = kErrorJournalNotActive};
    const ChangeJournal journal = journal_ ? *journal_ : EmptyJournal();
    if (LoadLe<uint64_t>(input, kReadJournalId) != journal.id) return {.error = kErrorInvalidParameter};
    const JournalRange range{.startUsn = LoadLe<int64_t>(input, 0),
                             .reasonMask = LoadLe<uint32_t>(input, kReadReasonMask),
                             .onlyOnClose = LoadLe<uint32_t>(input, kReadOnlyOnClose) != 0};
    return ReadChangeJournal(*reader_.source, journal, range, output, cancelled_);
  }

  // Its size grows where somebody else writes the volume. False where a journal that was there cannot be
  // read now: half written, or a device that stumbles. One that stays away is gone.
  bool RefreshJournal() {
    constexpr int kMostTornLooks = 10;  // chosen: some seconds, at the pauses of a monitor
    auto fresh = OpenChangeJournal(reader_);
    if (cancelled_) return false;
    isJournalKnown_ = true;
    if (!fresh && journal_ && ++tornLooks_ < kMostTornLooks) return false;
    tornLooks_ = 0;
    journal_ = std::move(fresh);
    return true;
  }

  bool FindJournal() {
    if (!isJournalKnown_) RefreshJournal();
    return journal_.has_value();
  }

  ChangeJournal EmptyJournal() const { return {.id = reader_.geometry.serial}; }

  int tornLooks_ = 0;
  std::mutex inUse_;  // held by a call in progress
  std::atomic<bool> cancelled_ = false;
  std::atomic<bool> isClosed_ = false;
  MftReader reader_;
  MftEnumeration enumeration_;
  std::optional<ChangeJournal> journal_;
  bool isJournalKnown_ = false;
  bool hasEmptyJournal_ = false;
};

}  // namespace

std::unique_ptr<VolumeDevice> OpenRawNtfs(std::unique_ptr<ByteSource> source,
                                          const std::atomic<bool>* cancelled) {
  auto reader = OpenMft(std::move(source), cancelled);
  if (!reader) return nullptr;
  return std::make_unique<RawNtfsDevice>(std::move(*reader));
}

}  // namespace quilmark
