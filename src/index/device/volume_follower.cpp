#include "index/device/volume_follower.h"

#include <chrono>
#include <shared_mutex>
#include <utility>

#include "platform/clock.h"
#include "platform/debug_output.h"
#include "platform/format.h"
#include "platform/utf.h"

namespace quilmark {

namespace {

constexpr auto kBetweenCancels = std::chrono::milliseconds(5);
constexpr uint32_t kDeviceReleaseMs = 50;  // the system may hold a closed device a moment longer

void LogCloseFailure(const std::u16string& drive, uint32_t error) {
  WriteDebugOutput(ToUtf8(FormatText(u"[Quilmark] CloseHandle failed, Error: %lu (0x%08X), Drive: %s\n",
                                     error, error, drive)));
}

}  // namespace

VolumeFollower::~VolumeFollower() { Close(); }

void VolumeFollower::TakeDevice(std::shared_ptr<VolumeDevice> device, std::u16string_view drive,
                                std::shared_ptr<const DeviceNotice> notice) {
  std::u16string name(drive);
  const std::scoped_lock lock(deviceLock_);
  NoteBack();
  volumeHandle_.swap(device);
  drive_.swap(name);
  if (notice != nullptr) notice_.swap(notice);
}

std::shared_ptr<VolumeDevice> VolumeFollower::Device() const {
  const std::shared_lock lock(deviceLock_);
  return volumeHandle_;
}

std::shared_ptr<VolumeDevice> VolumeFollower::LetGo() {
  const std::scoped_lock lock(deviceLock_);
  return std::exchange(volumeHandle_, nullptr);
}

bool VolumeFollower::IsOpen() const {
  const std::shared_lock lock(deviceLock_);
  return volumeHandle_ != nullptr || monitorThread_.joinable();
}

bool VolumeFollower::HasNotice() const {
  const std::shared_lock lock(deviceLock_);
  return notice_ != nullptr;
}

bool VolumeFollower::HasNotice(uintptr_t id) const {
  const std::shared_lock lock(deviceLock_);
  return notice_ != nullptr && notice_->id == id;
}

std::shared_ptr<const DeviceNotice> VolumeFollower::ReplaceNotice(
    std::shared_ptr<const DeviceNotice> notice) {
  const std::scoped_lock lock(deviceLock_);
  notice_.swap(notice);
  return notice;
}

// The thread waits until it is known to whoever stops it.
void VolumeFollower::Start(Work work) {
  auto wanted = std::make_shared<std::atomic<bool>>(true);
  std::promise<void> known;
  std::packaged_task<void()> follow(
      [work = std::move(work), wanted, begin = known.get_future().share()] {
        begin.wait();
        work(*wanted);
      });
  std::future<void> ended = follow.get_future();
  std::thread thread(std::move(follow));
  const bool isTheOne = Publish(thread, ended, wanted);
  if (!isTheOne) *wanted = false;
  known.set_value();
  if (!isTheOne) thread.join();
}

// Takes all three where there is no thread; else false.
bool VolumeFollower::Publish(std::thread& thread, std::future<void>& ended,
                             std::shared_ptr<std::atomic<bool>>& wanted) {
  const std::scoped_lock lock(deviceLock_);
  if (monitorThread_.joinable()) return false;
  monitorThread_.swap(thread);
  std::swap(ended_, ended);
  wanted_.swap(wanted);
  monitorRunning = true;
  return true;
}

void VolumeFollower::Stop() {
  const std::scoped_lock stopping(stop_);
  Taken taken;
  {
    const std::scoped_lock lock(deviceLock_);
    taken = TakeLocked();
  }
  Join(taken);
}

void VolumeFollower::Close() { CloseThat(Which::kAny); }

void VolumeFollower::CloseTakenOut() { CloseThat(Which::kTakenOut); }

void VolumeFollower::NoteBack() {
  takenOut = false;
  goneTold = false;
}

// deviceLock_ and stop_ held. Tells the thread to end.
VolumeFollower::Taken VolumeFollower::TakeLocked() {
  monitorRunning = false;
  if (wanted_ != nullptr) *wanted_ = false;
  return {.thread = std::move(monitorThread_),
          .ended = std::move(ended_),
          .device = volumeHandle_,
          .drive = drive_};
}

// stop_ held. A cancellation has no effect on a call that has yet to begin, so it is repeated until
// the thread is out.
void VolumeFollower::Join(Taken& taken) {
  if (!taken.thread.joinable()) return;
  do {  // it may be about to make a call or a pause when it is told to end
    pause_.Wake();
    if (taken.device != nullptr) taken.device->Cancel();
  } while (taken.ended.wait_for(kBetweenCancels) != std::future_status::ready);
  taken.thread.join();
}

// One look at the volume decides, and takes the thread and the device as they are then: a build that
// comes meanwhile keeps its own.
void VolumeFollower::CloseThat(Which which) {
  const std::scoped_lock stopping(stop_);
  Taken taken;
  {
    const std::scoped_lock lock(deviceLock_);
    if (which == Which::kTakenOut && !takenOut) return;
    taken = TakeLocked();
  }
  Join(taken);
  if (taken.device == nullptr) return;
  {
    const std::scoped_lock lock(deviceLock_);
    if (volumeHandle_ == taken.device) volumeHandle_ = nullptr;
  }
  if (const uint32_t error = taken.device->Close(); error != 0) LogCloseFailure(taken.drive, error);
  SleepMs(kDeviceReleaseMs);
}

}  // namespace quilmark
