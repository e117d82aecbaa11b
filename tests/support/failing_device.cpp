#include "support/failing_device.h"

#include <utility>

#include "index/build/ntfs_volume.h"

namespace quilmark {

class FailingDevice : public VolumeDevice {
 public:
  FailingDevice(DeviceFaults& faults, std::unique_ptr<VolumeDevice> behind)
      : faults_(faults), behind_(std::move(behind)) {
    const std::scoped_lock lock(faults_.mutex_);
    ++faults_.openDevices_;
  }
  ~FailingDevice() override { CloseBehind(); }

  Reply Control(uint32_t code, std::span<const std::byte> input, std::span<std::byte> output) override {
    return Answer([&] { return behind_->Control(code, input, output); });
  }
  Reply ReadAt(ByteOffset offset, std::span<std::byte> buffer) override {
    return Answer([&] { return behind_->ReadAt(offset, buffer); });
  }
  std::optional<FileFacts> ReadFacts(FileReference reference) override {
    if (faults_.Ask() != DeviceFaults::Verdict::kPass) return std::nullopt;
    return behind_->ReadFacts(reference);
  }
  void Cancel() override { behind_->Cancel(); }

  // The handle is gone even where that is said to have failed.
  uint32_t Close() override {
    const bool fails = faults_.Ask() != DeviceFaults::Verdict::kPass;
    const uint32_t error = CloseBehind();
    return fails ? faults_.error_ : error;
  }

 private:
  template <typename Call>
  Reply Answer(Call call) {
    const auto verdict = faults_.Ask();
    if (verdict == DeviceFaults::Verdict::kFail) return {.error = faults_.error_};
    Reply reply = call();
    if (verdict == DeviceFaults::Verdict::kHalf) reply.bytes /= 2;
    return reply;
  }

  uint32_t CloseBehind() {
    {
      const std::scoped_lock lock(faults_.mutex_);
      if (!std::exchange(isClosed_, true)) --faults_.openDevices_;
    }
    return behind_->Close();
  }

  DeviceFaults& faults_;
  const std::unique_ptr<VolumeDevice> behind_;
  bool isClosed_ = false;  // faults_.mutex_
};

// What OpenVolumeDevice's place is taken by has no state of its own.
static DeviceFaults* installedFaults = nullptr;
static FailingVolumes::Opener installedOpener;

std::unique_ptr<VolumeDevice> DeviceFaults::InFrontOf(std::unique_ptr<VolumeDevice> behind) {
  return std::make_unique<FailingDevice>(*this, std::move(behind));
}

bool DeviceFaults::HasFailed() const {
  const std::scoped_lock lock(mutex_);
  return failing_ != 0 && calls_ >= failing_;
}

int DeviceFaults::OpenDevices() const {
  const std::scoped_lock lock(mutex_);
  return openDevices_;
}

DeviceFaults::Verdict DeviceFaults::Ask() {
  Verdict verdict = Verdict::kPass;
  {
    const std::scoped_lock lock(mutex_);
    const int number = ++calls_;
    if (failing_ == 0 || number < failing_) return Verdict::kPass;
    if (number == failing_) verdict = kind_ == FaultKind::kHalf ? Verdict::kHalf : Verdict::kFail;
    if (number > failing_ && kind_ != FaultKind::kOnce) verdict = Verdict::kFail;
  }
  if (verdict != Verdict::kPass && onFailure) onFailure();
  return verdict;
}

FailingVolumes::FailingVolumes(DeviceFaults& faults, Opener opener) {
  installedFaults = &faults;
  installedOpener = std::move(opener);
  InstallVolumeOpener(Open);
}

FailingVolumes::~FailingVolumes() {
  InstallVolumeOpener(nullptr);
  installedOpener = nullptr;
  installedFaults = nullptr;
}

std::unique_ptr<VolumeDevice> FailingVolumes::Open(std::u16string_view drive, VolumeAccess,
                                                   uint32_t& error) {
  error = installedFaults->error_;
  if (installedFaults->Ask() == DeviceFaults::Verdict::kFail) return nullptr;
  auto behind = installedOpener(drive);
  if (behind == nullptr) return nullptr;
  error = 0;
  return installedFaults->InFrontOf(std::move(behind));
}

}  // namespace quilmark
