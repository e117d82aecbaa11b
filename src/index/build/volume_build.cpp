#include "index/build/volume_build.h"

namespace quilmark {

VolumeBuild::VolumeBuild(VolumeIndex& volume, std::u16string_view drive, std::u16string_view fileSystem)
    : volume_(volume), busy_(volume), lock_(volume.indexLock, std::defer_lock) {
  volume.follower.Close();
  lock_.lock();
  NameVolume(volume, drive, fileSystem);
  volume.valid = true;
}

VolumeBuild::~VolumeBuild() {
  if (!hasSucceeded_) volume_.valid = false;
}

}  // namespace quilmark
