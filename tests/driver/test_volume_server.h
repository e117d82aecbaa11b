// The volume "N:" of the test driver (tests/driver), answered by a device of the test.
#pragma once

#include <windows.h>

#include <atomic>
#include <thread>

#include "platform/volume_device.h"
#include "platform/win32/file_handle.h"

namespace quilmark {

class TestVolumeServer {
 public:
  // Installs and starts the driver, which stands beside the test program. Throws where that fails.
  // `answers` is asked on a thread of its own.
  explicit TestVolumeServer(VolumeDevice& answers);
  ~TestVolumeServer();
  TestVolumeServer(const TestVolumeServer&) = delete;
  TestVolumeServer& operator=(const TestVolumeServer&) = delete;

  // Every request from now on finds the device gone (error 1167).
  void LoseDevice() { isLost_ = true; }

 private:
  void Serve();

  VolumeDevice& answers_;
  std::atomic<bool> isLost_ = false;
  UniqueFile server_;
  std::thread thread_;
};

}  // namespace quilmark
