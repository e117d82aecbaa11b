#include <atomic>
#include <exception>
#include <memory>
#include <string>
#include <thread>

#include "cli/drive_plan.h"
#include "cli/shared_drive.h"
#include "index/build/directory_walk.h"
#include "index/build/ntfs_volume.h"
#include "index/engine/search_engine.h"
#include "platform/clock.h"
#include "platform/drive_roots.h"
#include "platform/drives.h"
#include "platform/ntfs/image_info.h"
#include "platform/utf.h"

namespace quilmark {

namespace {

constexpr uint32_t kProgressMs = 100;  // between two states of the line
constexpr uint32_t kStepMs = 10;       // how late the end of the builds may be noticed

struct Build {
  const PlannedDrive& planned;
  std::unique_ptr<VolumeIndex> volume = std::make_unique<VolumeIndex>();
  bool found = false;
  std::string failure;        // what ended the build, where something did
  bool isRefused = false;     // the volume's records could not be had, its folders were read instead
  uint64_t missingBytes = 0;  // of an image that is cut short
};

void RunBuild(Build& build) {
  const auto info = ReadVolumeInfo(build.planned.letter);
  if (!info) return;
  const std::u16string drive = {build.planned.letter, u':'};
  if (!build.planned.shared.empty()) {
    build.found = BuildWalkVolume(*build.volume, drive, info->fileSystem, {.source = ListShared});
    if (build.found) HideSharedRoots(*build.volume);
    return;
  }
  if (info->fileSystem == kNtfs) {
    build.found = BuildNtfsVolume(*build.volume, drive);
    const bool isImage = !build.planned.typed.empty();  // which has no folders to read
    // By the system's path: the letter of the image may be that of the drive it lies on.
    const auto root = SharedRootOf(build.planned.letter);
    if (root != nullptr) build.missingBytes = MissingBytesOfImage(SystemPathOfRoot(*root));
    if (build.found || isImage) return;
    build.isRefused = true;
    build.found = BuildWalkVolume(*build.volume, drive, kNtfsWithoutJournal);
    return;
  }
  build.found = BuildWalkVolume(*build.volume, drive, info->fileSystem);
}

void TellRefused(const Build& build) {
  std::fprintf(
      stderr,
      "quilmark: %s: the volume's records cannot be read, which takes administrator rights; reading its "
      "folders\n",
      ToUtf8(std::u16string(1, build.planned.letter)).c_str());
}

// Tells that an image is cut short: what lies in the missing part cannot be found.
void TellCutShort(const PlannedDrive& planned, uint64_t missingBytes) {
  std::fprintf(stderr, "quilmark: '%s' is cut short: the last %llu bytes of its volume are missing\n",
               planned.typed.c_str(), static_cast<unsigned long long>(missingBytes));
}

// "Indexing C: 120000 D: 5000"
std::string ProgressLine(const std::vector<Build>& builds) {
  std::string line = "Indexing";
  for (const Build& build : builds) {
    line += " " + ToUtf8(std::u16string(1, build.planned.letter)) + ": " +
            std::to_string(build.volume->recordsRead);
  }
  return line;
}

// Shows the line until all builds have ended, and then takes it off.
void ShowProgress(const std::vector<Build>& builds, const std::atomic<size_t>& ended) {
  size_t shown = 0;  // columns
  for (uint32_t waited = 0; ended < builds.size(); waited += kStepMs) {
    if (waited % kProgressMs == 0 && waited != 0) {
      const std::string line = ProgressLine(builds);
      shown = line.size();
      std::fprintf(stderr, "\r%s", line.c_str());
    }
    SleepMs(kStepMs);
  }
  if (shown != 0) std::fprintf(stderr, "\r%*s\r", static_cast<int>(shown), "");
}

// Hands the volume to the engine, or puts what is wrong into the outcome.
void TakeBuild(Build& build, IndexOutcome& outcome) {
  if (build.isRefused) TellRefused(build);
  if (build.missingBytes != 0) TellCutShort(build.planned, build.missingBytes);
  if (!build.failure.empty()) {
    outcome.error = ToUtf8(std::u16string(1, build.planned.letter)) + ": " + build.failure;
  } else if (build.found) {
    AddVolume(Engine(), std::move(build.volume));
  } else if (!build.planned.typed.empty() && !ShutdownRequested) {
    outcome.error = "'" + build.planned.typed + "' has no entries";  // gone since it was looked at
  }
}

}  // namespace

IndexOutcome IndexDrives(const std::vector<PlannedDrive>& drives, bool showProgress,
                         const std::function<void(const VolumeChange&)>& onChange) {
  const uint64_t start = TickMs();
  std::vector<Build> builds;
  builds.reserve(drives.size());
  for (const PlannedDrive& drive : drives) {
    builds.push_back({.planned = drive});
    builds.back().volume->onChange = onChange;
  }

  std::atomic<size_t> ended = 0;
  std::vector<std::thread> threads;
  for (Build& build : builds) {
    threads.emplace_back([&build, &ended] {
      try {
        RunBuild(build);
      } catch (const std::exception& exception) {
        build.found = false;
        build.failure = exception.what();
      }
      ++ended;
    });
  }
  if (showProgress) ShowProgress(builds, ended);
  for (std::thread& thread : threads) thread.join();

  IndexOutcome outcome{.milliseconds = static_cast<double>(TickMs() - start)};
  for (Build& build : builds) TakeBuild(build, outcome);
  if (outcome.error.empty() && !Engine().ready && !ShutdownRequested)
    outcome.error = "no drive can be read";
  return outcome;
}

}  // namespace quilmark
