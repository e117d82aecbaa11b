// The open device of a volume, and the thread that follows its change journal.
#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <future>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>

#include "platform/locks.h"
#include "platform/pause.h"
#include "platform/volume_device.h"

namespace quilmark {

// Owns the device, its notice and the thread: its own end stops the thread and closes the device, as
// Close does. What the thread works on must therefore outlive the follower.
//
// Any thread may call everything here, except that the thread which follows must not call Stop, Close
// or CloseTakenOut, which wait for its end.
class VolumeFollower {
 public:
  // What the thread runs. It returns soon after `wanted` is clear; to pause it calls Rest.
  using Work = std::function<void(std::atomic<bool>& wanted)>;

  VolumeFollower() = default;
  ~VolumeFollower();
  VolumeFollower(const VolumeFollower&) = delete;
  VolumeFollower& operator=(const VolumeFollower&) = delete;

  // Holds an opened device of the volume of `drive` ("X:", which a line about a failing close names)
  // from now on, and ends the state of being taken out. A former device is let go. A null `notice`
  // leaves the former one: it tells when the volume is free again.
  void TakeDevice(std::shared_ptr<VolumeDevice> device, std::u16string_view drive,
                  std::shared_ptr<const DeviceNotice> notice = nullptr);

  // The device, or null where none is open. Once it is closed its calls fail with error 6.
  [[nodiscard]] std::shared_ptr<VolumeDevice> Device() const;

  // Takes the device out without closing it; null where none is open. The thread is left alone.
  std::shared_ptr<VolumeDevice> LetGo();

  // Whether a device is held, or a thread that has yet to be joined.
  bool IsOpen() const;

  // Whether somebody is told of what others want with the volume.
  bool HasNotice() const;

  // Whether that is the notice with the number `id`.
  bool HasNotice(uintptr_t id) const;

  // Null stands for no notice. Returns the former one, whose end is a call to the system: for a caller
  // that holds a lock to put off.
  std::shared_ptr<const DeviceNotice> ReplaceNotice(std::shared_ptr<const DeviceNotice> notice);

  // Runs `work` on a thread, with monitorRunning set. A stop finds all of that or nothing. No effect
  // while there is a thread. std::system_error where the system gives none; nothing has changed then.
  void Start(Work work);

  // A pause of that thread: `ms` milliseconds, or less once it is to end.
  void Rest(uint32_t ms, const std::atomic<bool>& wanted) { pause_.Sleep(ms, wanted); }

  // Ends and joins the thread, whose call to the device is cancelled. The device stays open. A second
  // caller waits as well.
  void Stop();

  // Stop, then gives the device back to the system and waits 50 ms, so that it is free for whoever
  // opens it next. Nothing where neither is there. A device that is opened meanwhile is left alone.
  void Close();

  // Close, unless a device was opened since the volume was taken out.
  void CloseTakenOut();

  // The volume is in use again: clears the two flags below.
  void NoteBack();

  std::atomic<bool> monitorRunning =
      false;  // the thread is meant to run; cleared when it ends by itself
  // The drive goes: the volume is out of the search, and its device closed or about to be.
  std::atomic<bool> takenOut = false;
  std::atomic<bool> goneTold = false;     // whoever asked what is gone knows of this volume
  std::atomic<int> closes = 0;            // jobs that close the volume, or are about to
  std::atomic<bool> awaitsClose = false;  // a sync passed the volume over, and comes again behind them

 private:
  enum class Which { kAny, kTakenOut };
  struct Taken {
    std::thread thread;
    std::future<void> ended;
    std::shared_ptr<VolumeDevice> device;
    std::u16string drive;
  };

  bool Publish(std::thread& thread, std::future<void>& ended,
               std::shared_ptr<std::atomic<bool>>& wanted);
  Taken TakeLocked();
  void Join(Taken& taken);
  void CloseThat(Which which);

  mutable OrderedLock deviceLock_{LockRank::kLeaf, "deviceLock"};  // for a look or a swap
  std::shared_ptr<VolumeDevice> volumeHandle_;                     // deviceLock_
  std::u16string drive_;                                           // deviceLock_
  std::shared_ptr<const DeviceNotice> notice_;                     // deviceLock_; of the latest device
  std::thread monitorThread_;                                      // deviceLock_
  std::future<void> ended_;                                        // deviceLock_; of monitorThread_
  std::shared_ptr<std::atomic<bool>> wanted_;  // deviceLock_; of that thread alone: no stop misses it
  Pause pause_;
  std::mutex stop_;  // held by whoever stops the thread, until it has ended;
                     // taken before deviceLock_
};

}  // namespace quilmark
