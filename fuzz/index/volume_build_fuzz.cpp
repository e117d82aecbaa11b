// Any bytes as the $MFT of a volume that is built into an index and then followed: the index keeps its
// invariants, holds each file of the table under its name and gives every record a path, also where the
// device fails one of the calls. The last byte says which call, and how the journal ends.
#include <mutex>
#include <shared_mutex>

#include "index/build/ntfs_volume.h"
#include "index/follow/usn_monitor.h"
#include "platform/ntfs/mft_enumeration.h"
#include "platform/ntfs/raw_ntfs_device.h"
#include "support/fuzz_input.h"
#include "support/mft_source.h"

using namespace quilmark;

namespace {

std::span<const std::byte> mft;  // of the input that runs

// A volume of the input that fails one call. Its journal cannot be read until it is followed, and ends
// after one block.
class FailingDevice : public VolumeDevice {
 public:
  FailingDevice(std::unique_ptr<VolumeDevice> raw, uint8_t choice)
      : raw_(std::move(raw)), callsToFailure_(choice & 7), end_(kEnds[choice >> 3 & 3]) {}

  Reply Control(uint32_t code, std::span<const std::byte> input, std::span<std::byte> output) override {
    if (code == kFsctlReadUsnJournal) {
      const int read = isFollowed_ ? journalReads_++ : 0;
      if (read == 0) return {.error = kErrorReadFault};
      if (read > 1) return {.error = end_};
    } else if (callsToFailure_ != 0 && --callsToFailure_ == 0) {
      return {.error = kErrorInvalidFunction};
    }
    return raw_->Control(code, input, output);
  }
  Reply ReadAt(ByteOffset offset, std::span<std::byte> buffer) override {
    return raw_->ReadAt(offset, buffer);
  }
  void Cancel() override { raw_->Cancel(); }
  uint32_t Close() override { return raw_->Close(); }
  void LetFollow() { isFollowed_ = true; }

 private:
  static constexpr uint32_t kEnds[] = {kErrorJournalNotActive, kErrorDeviceNotConnected,
                                       kErrorOperationAborted, kErrorAccessDenied};
  std::unique_ptr<VolumeDevice> raw_;
  std::atomic<bool> isFollowed_ = false;
  int journalReads_ = 0;
  int callsToFailure_;
  uint32_t end_;
};

std::unique_ptr<VolumeDevice> OpenInput(std::u16string_view, VolumeAccess, uint32_t& error) {
  error = kErrorInvalidFunction;
  auto raw = OpenRawNtfs(std::make_unique<MftSource>(mft));
  if (raw == nullptr) return nullptr;
  const uint8_t choice = mft.empty() ? uint8_t{0} : std::to_integer<uint8_t>(mft.back());
  return std::make_unique<FailingDevice>(std::move(raw), choice);
}

struct NamedFile {
  uint64_t frn = 0, parentFrn = 0;
  std::u16string name;
};

std::vector<NamedFile> ListFiles() {
  std::vector<NamedFile> files;
  auto reader = OpenMft(std::make_unique<MftSource>(mft));
  MftEnumeration enumeration;
  std::u16string units;
  for (RecordNumber number; reader->HasRecord(number); ++number) {
    const auto file = FileAt(*reader, enumeration, number);
    if (!file) continue;
    const auto name = NameUnits(file->record, units);
    files.push_back({file->record.frn.value, file->record.parentFrn.value, std::u16string(name)});
  }
  return files;
}

// The records are files of the table in its order: those that the journal's position lets through, up to
// a call that failed.
void CheckFiles(const VolumeIndex& volume) {
  const auto files = ListFiles();
  auto file = files.begin();
  for (uint32_t i = 0; i < volume.records.size(); ++i, ++file) {
    const FileRecord& record = volume.records[i];
    while (file != files.end() && file->frn != record.frn) ++file;
    Require(file != files.end());
    Require(record.parentFrn == file->parentFrn && NameOf(record) == file->name);
  }
}

void CheckTables(VolumeIndex& volume) {
  {
    const std::shared_lock lock(volume.indexLock);
    Require(FindBrokenInvariant(volume).empty());
    Require(MemoryOf(volume) >= volume.records.size() * sizeof(FileRecord));
  }
  for (uint32_t i = 0; i < volume.records.size(); ++i) {
    Require(BuildPathLocked(volume, i).starts_with(u"N:"));
    Require(KindOfLocked(volume, i)->frn == volume.records[i].frn);
  }
  Require(!KindOfLocked(volume, volume.records.size()));
}

// As its thread does, but here: until the journal ends.
void Follow(VolumeIndex& volume) {
  static_cast<FailingDevice&>(*volume.follower.Device()).LetFollow();
  monitorPauses = {.afterReadMs = 0, .afterErrorMs = 0};
  std::atomic<bool> wanted = true;
  RunUsnMonitor(volume, wanted);
  monitorPauses = {};
  Require(!wanted);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  mft = std::as_bytes(std::span(data, size));
  InstallVolumeOpener(OpenInput);
  VolumeIndex volume;
  const bool isBuilt = BuildNtfsVolume(volume, u"N:");
  StopMonitor(volume);
  Require(isBuilt || !volume.valid);
  if (isBuilt) {
    CheckFiles(volume);
    Follow(volume);
    CheckTables(volume);
  }
  // Given back here: the destructor would wait until a device of the system is free.
  volume.follower.LetGo();
  return 0;
}
