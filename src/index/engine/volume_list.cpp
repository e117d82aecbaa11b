#include "index/engine/volume_list.h"

#include <algorithm>
#include <mutex>

#include "platform/shutdown.h"
#include "platform/text.h"

namespace quilmark {

std::u16string LettersOf(uint32_t mask) {
  std::u16string letters;
  for (unsigned i = 0; i < 26; ++i) {
    if ((mask >> i & 1) != 0) letters.push_back(static_cast<char16_t>(u'A' + i));
  }
  return letters;
}

uint32_t BitOfDrive(const VolumeIndex& volume) {
  if (volume.drive.empty()) return 0;
  const auto index = static_cast<unsigned>(volume.drive[0] - u'A');
  return index < 26 ? uint32_t{1} << index : 0;
}

VolumeIndex* FindVolumeLocked(const SearchEngine& engine, std::u16string_view drive) {
  for (const auto& volume : engine.volumes) {
    if (EqualNoCase(volume->drive, drive)) return volume.get();
  }
  return nullptr;
}

void SortByDrive(SearchEngine& engine) {
  std::sort(engine.volumes.begin(), engine.volumes.end(),
            [](const auto& a, const auto& b) { return a->drive < b->drive; });
}

// volumesMutex held. What loses stays with the caller, who lets it go outside the lock.
static void PushUnlessPresent(SearchEngine& engine, std::unique_ptr<VolumeIndex>& volume) {
  if (FindVolumeLocked(engine, volume->drive) == nullptr) engine.volumes.push_back(std::move(volume));
}

void AddUnlessPresent(SearchEngine& engine, std::unique_ptr<VolumeIndex> volume) {
  const std::scoped_lock lock(engine.volumesMutex);
  PushUnlessPresent(engine, volume);
}

void AddReady(SearchEngine& engine, std::unique_ptr<VolumeIndex> volume) {
  const std::scoped_lock lock(engine.volumesMutex);
  PushUnlessPresent(engine, volume);
  engine.ready = true;
}

std::optional<VolumeInfo> AskVolumeInfo(const SearchEngine& engine, char16_t letter) {
  return engine.readVolumeInfo.load()(letter);
}

void PostUnlessEnding(PostTarget window, uint32_t message, uint64_t first, int64_t second) {
  if (!ShutdownRequested) PostIfAlive(window, message, first, second);
}

}  // namespace quilmark
