// Any bytes as two blocks of the journal: the index keeps its invariants and stays where it can be
// searched.
#include <cstdint>
#include <cstdlib>
#include <shared_mutex>

#include "index/follow/usn_monitor.h"

using namespace quilmark;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  VolumeIndex volume;
  volume.drive = u"N:";
  volume.onChange = [](const VolumeChange&) {};
  volume.mftSizes[40] = {1, 1};  // what a scan of the table found: by record number
  const auto bytes = std::as_bytes(std::span(data, size));
  ApplyJournalBlock(volume, bytes.first(size / 2));
  ApplyJournalBlock(volume, bytes);
  const std::shared_lock lock(volume.indexLock);
  if (!FindBrokenInvariant(volume).empty()) std::abort();
  for (uint32_t i = 0; i < volume.records.size(); ++i) {
    if (!BuildPath(volume, i).starts_with(u"N:")) std::abort();
  }
  return 0;
}
