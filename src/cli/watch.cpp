#include "cli/watch.h"

#include <condition_variable>
#include <cstdio>
#include <deque>
#include <mutex>
#include <nlohmann/json.hpp>

#include "cli/complain.h"
#include "cli/drive_plan.h"
#include "cli/hit_writer.h"
#include "index/engine/search_engine.h"
#include "index/follow/usn_monitor.h"
#include "platform/clock.h"
#include "platform/console.h"
#include "platform/drives.h"
#include "platform/utf.h"
#include "platform/volume_device.h"

namespace quilmark {

namespace {

constexpr uint32_t kPollMs = 50;  // how soon an interrupt is noticed while nothing changes
constexpr const char* kEventNames[] = {"created", "deleted", "renamed", "moved"};

// Carries changes from the monitors, which hold a lock, to standard output, which may be slow.
class ChangeQueue {
 public:
  void Push(const VolumeChange& change) {
    {
      const std::scoped_lock lock(mutex_);
      changes_.push_back(change);
    }
    changed_.notify_one();
  }

  std::deque<VolumeChange> TakeAll(uint32_t waitMs) {
    std::unique_lock lock(mutex_);
    changed_.wait_for(lock, std::chrono::milliseconds(waitMs), [&] { return !changes_.empty(); });
    return std::exchange(changes_, {});
  }

 private:
  std::mutex mutex_;
  std::condition_variable changed_;
  std::deque<VolumeChange> changes_;
};

// "2026-03-01T14:05:09.250", local time.
std::string TimeText() {
  const LocalTime now = NowLocal();
  char text[40];
  std::snprintf(text, sizeof text, "%04d-%02d-%02dT%02d:%02d:%02d.%03d", now.year, now.month, now.day,
                now.hour, now.minute, now.second, now.millisecond);
  return text;
}

bool HasJournal(char16_t letter) {
  uint32_t error = 0;
  const auto device = OpenVolumeDevice(std::u16string({letter, u':'}), VolumeAccess::kRead, error);
  std::byte data[56];
  return device != nullptr && device->Control(kFsctlQueryUsnJournal, {}, data).error == 0;
}

// What keeps a named drive from being followed; empty if nothing does.
std::string WatchError(const PlannedDrive& drive) {
  const auto info = ReadVolumeInfo(drive.letter);
  if (!info || info->fileSystem != kNtfs) return "'" + drive.typed + "' is no NTFS volume";
  // A volume without a journal would be given an empty one that nothing writes to.
  if (!HasJournal(drive.letter)) return "'" + drive.typed + "' has no change journal";
  return {};
}

// The drives to follow: those that are named, or those of the system that have a journal interface.
std::string ChooseDrives(std::vector<PlannedDrive>& drives) {
  std::erase_if(drives, [](const PlannedDrive& drive) {
    const auto info = drive.typed.empty() ? ReadVolumeInfo(drive.letter) : std::nullopt;
    return drive.typed.empty() && (!info || info->fileSystem != kNtfs);
  });
  for (const PlannedDrive& drive : drives) {
    if (drive.typed.empty()) continue;
    if (std::string error = WatchError(drive); !error.empty()) return error;
  }
  return drives.empty() ? "no NTFS volume to follow" : std::string();
}

// Why a monitor ended; empty while all run.
std::string EndedMonitor() {
  for (const VolumeIndex* const volume : CopyVolumes(Engine())) {
    if (volume->follower.monitorRunning) continue;
    return ToUtf8(volume->drive) +
           (volume->valid ? " the change journal has ended" : " the volume is gone");
  }
  return {};
}

struct Printed {
  uint64_t count = 0;
  WriteOutcome outcome = WriteOutcome::kDone;
};

void PrintChanges(const std::deque<VolumeChange>& changes, const WatchOptions& options,
                  Printed& printed) {
  for (const VolumeChange& change : changes) {
    if (options.limit && printed.count >= *options.limit) return;
    printed.outcome = WriteText(FormatChange(change, options.json, TimeText()) + "\n", stdout);
    if (printed.outcome != WriteOutcome::kDone) return;
    ++printed.count;
  }
}

int Follow(ChangeQueue& queue, const WatchOptions& options) {
  const uint64_t start = TickMs();
  Printed printed;
  for (;;) {
    // Asked before the queue is emptied: what a monitor reported before it ended is printed.
    const std::string ended = EndedMonitor();
    PrintChanges(queue.TakeAll(kPollMs), options, printed);
    if (printed.outcome == WriteOutcome::kFailed)
      return Complain("standard output cannot be written to");
    if (ShutdownRequested) return kExitInterrupted;
    const bool isOver = printed.outcome == WriteOutcome::kStopped ||
                        (options.limit && printed.count >= *options.limit) ||
                        (options.seconds && (TickMs() - start) / 1'000 >= *options.seconds);
    if (isOver) return printed.count != 0 ? kExitFound : kExitNothing;
    if (!ended.empty()) return Complain(ended);
  }
}

int IndexAndFollow(const WatchOptions& options, ChangeQueue& queue) {
  DrivePlan plan = PlanDrives({.paths = options.paths, .drives = options.drives});
  if (!plan.error.empty()) return Complain(plan.error);
  if (const std::string error = MapPlannedDrives(plan.drives); !error.empty()) return Complain(error);
  if (const std::string error = ChooseDrives(plan.drives); !error.empty()) return Complain(error);
  const IndexOutcome indexed = IndexDrives(plan.drives, IsTerminal(stderr),
                                           [&queue](const VolumeChange& change) { queue.Push(change); });
  if (ShutdownRequested) return kExitInterrupted;
  if (!indexed.error.empty()) return Complain(indexed.error);
  // A journal that went away since the first look has been replaced by one that nothing writes to.
  if (const std::string error = ChooseDrives(plan.drives); !error.empty()) return Complain(error);
  return Follow(queue, options);
}

}  // namespace

std::string FormatChange(const VolumeChange& change, bool json, const std::string& time) {
  const char* const event = kEventNames[change.kind];
  const std::string path = ToHostBytes(change.path), from = ToHostBytes(change.formerPath);
  if (json) {
    nlohmann::ordered_json object = {{"event", event}, {"path", path}};
    if (!from.empty()) object["from"] = from;
    object["dir"] = change.isDirectory;
    object["time"] = time;
    return object.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace);
  }
  const char* const end = change.isDirectory ? "\\" : "";
  const std::string column = std::string(event) + std::string(9 - std::string(event).size(), ' ');
  if (from.empty()) return column + path + end;
  return column + from + end + " -> " + path + end;
}

int RunWatch(const WatchOptions& options) {
  OnInterrupt([] { ShutdownRequested = true; });
  ChangeQueue queue;
  const int exitCode = IndexAndFollow(options, queue);
  ShutdownRequested = true;
  for (VolumeIndex* const volume : CopyVolumes(Engine())) StopMonitor(*volume);
  return exitCode;
}

}  // namespace quilmark
