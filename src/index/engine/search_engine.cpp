#include "index/engine/search_engine.h"

#include <mutex>

#include "index/engine/volume_list.h"

namespace quilmark {

SearchEngine& Engine() {
  // Never destroyed: detached threads may look at it until the process is gone.
  static auto* const engine = new SearchEngine;
  return *engine;
}

std::vector<VolumeIndex*> CopyVolumes(const SearchEngine& engine) {
  std::vector<VolumeIndex*> volumes;
  volumes.reserve(kMostDrives);
  const std::scoped_lock lock(engine.volumesMutex);
  for (const auto& volume : engine.volumes) {
    if (volume != nullptr) volumes.push_back(volume.get());
  }
  return volumes;
}

std::unique_ptr<VolumeIndex> NewVolume(const SearchEngine& engine) {
  auto volume = std::make_unique<VolumeIndex>();
  volume->listeners = {.window = engine.window, .attributesBecameStale = engine.attributesBecameStale};
  return volume;
}

VolumeIndex* AddVolume(SearchEngine& engine, std::unique_ptr<VolumeIndex> volume) {
  VolumeIndex* const added = volume.get();
  const std::scoped_lock lock(engine.volumesMutex);
  engine.volumes.push_back(std::move(volume));
  SortByDrive(engine);
  engine.ready = true;
  return added;
}

}  // namespace quilmark
