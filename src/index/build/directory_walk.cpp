#include "index/build/directory_walk.h"

#include <algorithm>
#include <thread>

#include "index/build/volume_build.h"
#include "platform/shutdown.h"

namespace quilmark {

namespace {

constexpr uint64_t kRootFrn = 1;

struct Walk {
  VolumeIndex& volume;
  FolderReader& reader;
  uint64_t nextFrn = kFirstSyntheticFrn;
};

void AppendEntry(VolumeIndex& volume, uint64_t frn, uint64_t parentFrn, bool isDirectory,
                 std::u16string_view name) {
  const uint32_t index =
      AppendRecord(volume, {.frn = frn, .parentFrn = parentFrn, .isDirectory = isDirectory}, name);
  SetIndexOf(volume.frnToIndex, volume.records, frn, index);
}

// Appends the contents of `folder`, each subfolder's contents right behind it.
void WalkFolder(Walk& walk, std::shared_ptr<PendingFolder> folder, uint64_t parentFrn) {
  if (ShutdownRequested) return;
  walk.reader.Read(*folder);
  size_t subfolder = 0;
  for (const FolderEntry& entry : folder->listing.entries) {
    if (ShutdownRequested) break;
    const uint64_t frn = walk.nextFrn++;
    AppendEntry(walk.volume, frn, parentFrn, entry.isDirectory, folder->listing.NameOf(entry));
    if (entry.isDirectory && subfolder < folder->subfolders.size()) {
      WalkFolder(walk, std::move(folder->subfolders[subfolder++]), frn);
    }
  }
  walk.volume.recordsRead = walk.volume.records.size();
  walk.reader.Release(std::move(folder));
}

// Listing waits for the disk or the network more than for a core.
unsigned ThreadsFor(const WalkOptions& options) {
  if (options.threads != 0) return options.threads;
  return std::clamp(std::thread::hardware_concurrency(), 2u, 8u);
}

}  // namespace

bool BuildWalkVolume(VolumeIndex& volume, std::u16string_view drive, std::u16string_view fileSystemName,
                     const WalkOptions& options) {
  VolumeBuild turn(volume, drive, fileSystemName);
  volume.journalId = 0;  // the drive may have been an NTFS one until now
  volume.nextUsn = 0;
  ResetVolumeTables(volume);
  SetIndexOf(volume.frnToIndex, volume.records, kRootFrn, kRootWithoutRecord);
  {
    FolderReader reader(options.source, ThreadsFor(options), kDeepestWalk);
    Walk walk{.volume = volume, .reader = reader};
    auto root = std::make_shared<PendingFolder>();
    root->path = drive;
    WalkFolder(walk, std::move(root), kRootFrn);
    volume.nextSyntheticFrn = walk.nextFrn;
  }
  if (volume.records.empty()) return false;
  volume.follower.NoteBack();
  turn.Succeed();
  return true;
}

}  // namespace quilmark
