// Volumes whose devices fail one call, in front of others that do not.
#pragma once

#include <functional>
#include <memory>
#include <mutex>
#include <string_view>

#include "platform/volume_device.h"
#include "support/system_faults.h"

namespace quilmark {

// What the devices in front have in common. Opening, Control, ReadAt, ReadFacts and Close count, Cancel
// does not. kHalf cuts what a call has read in two, and fails every call behind it; kFull does not
// apply.
class DeviceFaults {
 public:
  // `failing` counts from 1; 0 lets every call pass.
  DeviceFaults(FaultKind kind, uint32_t error, int failing)
      : kind_(kind), error_(error), failing_(failing) {}

  std::unique_ptr<VolumeDevice> InFrontOf(std::unique_ptr<VolumeDevice> behind);

  bool HasFailed() const;
  int OpenDevices() const;
  std::function<void()> onFailure;  // set before the first call

 private:
  friend class FailingDevice;
  friend class FailingVolumes;
  enum class Verdict { kPass, kHalf, kFail };
  Verdict Ask();

  const FaultKind kind_;
  const uint32_t error_;
  const int failing_;
  mutable std::mutex mutex_;
  int calls_ = 0;
  int openDevices_ = 0;
};

// Makes BuildNtfsVolume open such devices over those of `opener`, for the lifetime of the object.
class FailingVolumes {
 public:
  using Opener = std::function<std::unique_ptr<VolumeDevice>(std::u16string_view drive)>;
  FailingVolumes(DeviceFaults& faults, Opener opener);
  ~FailingVolumes();
  FailingVolumes(const FailingVolumes&) = delete;
  FailingVolumes& operator=(const FailingVolumes&) = delete;

 private:
  static std::unique_ptr<VolumeDevice> Open(std::u16string_view drive, VolumeAccess access,
                                            uint32_t& error);
};

}  // namespace quilmark
