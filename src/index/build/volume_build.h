// One build of a volume, from its first step to its end.
#pragma once

#include <mutex>
#include <string_view>

#include "index/tables/volume_index.h"

namespace quilmark {

// Keeps the volume busy, and its indexLock held exclusively, for its own lifetime. However the build
// ends, also by an exception: without Succeed the volume is not valid afterwards, so that searches pass
// over it and the next sync builds it again. A background thread's work.
class VolumeBuild {
 public:
  // Stops the monitor, closes the device, waits for indexLock, gives the volume its names and makes it
  // valid. `drive` may be the volume's own.
  VolumeBuild(VolumeIndex& volume, std::u16string_view drive, std::u16string_view fileSystem);
  ~VolumeBuild();
  VolumeBuild(const VolumeBuild&) = delete;
  VolumeBuild& operator=(const VolumeBuild&) = delete;

  // The tables are whole: `valid` stays as it is.
  void Succeed() { hasSucceeded_ = true; }

 private:
  VolumeIndex& volume_;
  BusyMark busy_;  // before the lock, and so cleared behind it
  std::unique_lock<OrderedLock> lock_;
  bool hasSucceeded_ = false;
};

}  // namespace quilmark
