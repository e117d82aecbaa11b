#include "window/program/churn_drive.h"

#include <algorithm>
#include <deque>
#include <mutex>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "index/build/ntfs_volume.h"
#include "index/engine/search_engine.h"
#include "platform/bytes.h"
#include "platform/clock.h"
#include "platform/drives.h"
#include "platform/file_reference.h"
#include "platform/usn_record.h"
#include "platform/volume_device.h"

namespace quilmark {
namespace {

constexpr char16_t kLetter = u'N';
constexpr uint64_t kRoot = MakeReference(5, 5), kJournalId = 77;
constexpr size_t kFiles = 50'000, kKeptChanges = 200'000;
constexpr uint32_t kDataOverwrite = 0x1, kDirectory = 0x10, kClose = 0x8000'0000;

struct File {
  uint64_t reference = 0;
  std::u16string name;
};

struct Change {
  int64_t usn = 0;
  File file;
  uint32_t reason = 0;
};

size_t BytesOf(const Change& change) { return UsnRecordLength(change.file.name.size()); }

// A block of records: a position, then as many of them as fit.
class Block {
 public:
  explicit Block(std::span<std::byte> output) : output_(output), used_(kUsnPositionBytes) {}
  bool Add(const Change& change) {
    if (used_ + BytesOf(change) > output_.size()) return false;
    const uint32_t attributes = change.file.reference == kRoot ? kDirectory : 0;
    PutUsnRecord(output_.subspan(used_),
                 {.frn = FileReference(change.file.reference),
                  .parentFrn = FileReference(kRoot),
                  .usn = change.usn,
                  .reason = change.reason,
                  .attributes = attributes,
                  .name = std::as_bytes(std::span(change.file.name))},
                 0);
    used_ += BytesOf(change);
    return true;
  }
  VolumeDevice::Reply End(int64_t position) {
    StoreLe(output_, 0, position);
    return {.bytes = used_};
  }

 private:
  std::span<std::byte> output_;
  size_t used_;
};

// What all devices of the drive show.
class ChurnVolume {
 public:
  explicit ChurnVolume(uint32_t changesPerSecond) : changesPerSecond_(changesPerSecond) {
    for (size_t i = 0; i < kFiles; ++i) files_.push_back(NewFile());
  }

  VolumeDevice::Reply Control(uint32_t code, std::span<const std::byte> input,
                              std::span<std::byte> output) {
    const std::scoped_lock lock(mutex_);
    CatchUp();
    switch (code) {
      case kFsctlQueryUsnJournal:
        if (output.size() < 56) return {.error = kErrorMoreData};
        std::fill(output.begin(), output.end(), std::byte{0});
        StoreLe(output, 0, kJournalId);
        StoreLe(output, 16, end_);
        return {.bytes = 56};
      case kFsctlEnumUsnData:
        return Enumerate(LoadLe<uint64_t>(input, 0), output);
      case kFsctlReadUsnJournal:
        return Read(LoadLe<int64_t>(input, 0), LoadLe<uint32_t>(input, 8), output);
      default:
        return {.error = kErrorInvalidFunction};
    }
  }

 private:
  File NewFile() {
    ++lastRecord_;
    return {MakeReference(lastRecord_, 1), u"churn " + NameOfNumber(random_()) + u".txt"};
  }
  static std::u16string NameOfNumber(uint32_t number) {
    std::u16string name;
    for (; number != 0; number /= 26) name += static_cast<char16_t>(u'a' + number % 26);
    return name;
  }
  void Note(const File& file, uint32_t reason) {
    journal_.push_back({end_, file, reason});
    end_ += static_cast<int64_t>(BytesOf(journal_.back()));
    if (journal_.size() > kKeptChanges) journal_.pop_front();
  }
  void ChangeOne() {
    File& file = files_[random_() % files_.size()];
    switch (random_() % 4) {
      case 0:
        Note(file, kUsnReasonFileDelete | kClose);
        file = NewFile();
        Note(file, kUsnReasonFileCreate);
        Note(file, kUsnReasonFileCreate | kClose);
        break;
      case 1:
        Note(file, kUsnReasonRenameOldName);
        file.name = NewFile().name;
        Note(file, kUsnReasonRenameNewName);
        Note(file, kUsnReasonRenameNewName | kClose);
        break;
      default:
        Note(file, kDataOverwrite | kClose);
    }
  }
  void CatchUp() {
    const uint64_t due = (TickMs() - start_) * changesPerSecond_ / 1'000;
    for (; done_ < due; ++done_) ChangeOne();
  }
  VolumeDevice::Reply Enumerate(uint64_t from, std::span<std::byte> output) {
    if (from > files_.size()) return {.error = kErrorHandleEof};
    Block block(output);
    if (from == 0) {
      block.Add({.file = {kRoot, u"."}});
      from = 1;
    }
    while (from <= files_.size() && block.Add({.file = files_[from - 1]})) ++from;
    return block.End(static_cast<int64_t>(from));
  }
  VolumeDevice::Reply Read(int64_t from, uint32_t reasons, std::span<std::byte> output) {
    auto next = std::lower_bound(journal_.begin(), journal_.end(), from,
                                 [](const Change& change, int64_t usn) { return change.usn < usn; });
    Block block(output);
    while (next != journal_.end() && ((next->reason & reasons) == 0 || block.Add(*next))) ++next;
    return block.End(next == journal_.end() ? end_ : next->usn);
  }

  std::mutex mutex_;
  const uint32_t changesPerSecond_;
  const uint64_t start_ = TickMs();
  std::mt19937 random_{1};
  std::vector<File> files_;
  std::deque<Change> journal_;
  uint64_t lastRecord_ = 100, done_ = 0;
  int64_t end_ = 64;
};

ChurnVolume* churnVolume = nullptr;  // never destroyed: a monitor reads it until the process is gone

struct ChurnDevice : VolumeDevice {
  Reply Control(uint32_t code, std::span<const std::byte> input, std::span<std::byte> output) override {
    return churnVolume->Control(code, input, output);
  }
  Reply ReadAt(ByteOffset, std::span<std::byte>) override { return {.error = kErrorInvalidFunction}; }
  void Cancel() override {}  // no call lasts
  uint32_t Close() override { return 0; }
};

}  // namespace

void MapChurnDrive(uint32_t changesPerSecond) {
  churnVolume = new ChurnVolume(changesPerSecond);
  MapDrive(kLetter, u"C:\\none");
  Engine().readVolumeInfo = [](char16_t letter) {
    return letter == kLetter ? std::optional(VolumeInfo{.fileSystem = std::u16string(kNtfs)})
                             : ReadVolumeInfo(letter);
  };
  InstallVolumeOpener([](std::u16string_view drive, VolumeAccess access,
                         uint32_t& error) -> std::unique_ptr<VolumeDevice> {
    if (drive.front() == kLetter) return std::make_unique<ChurnDevice>();
    return OpenVolumeDevice(drive, access, error);
  });
}

}  // namespace quilmark
