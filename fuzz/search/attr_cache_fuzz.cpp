// Any bytes as an attribute cache: what is read lies in the bytes, and what is written from it reads
// back as it was.
#include <cstdint>
#include <cstdlib>
#include <utility>

#include "search/attr_cache_file.h"

using namespace quilmark;

namespace {

bool IsSame(const std::pair<uint64_t, AttrEntry>& a, const std::pair<uint64_t, AttrEntry>& b) {
  return a.first == b.first && a.second.size == b.second.size &&
         a.second.modified == b.second.modified && a.second.created == b.second.created &&
         a.second.valid == b.second.valid;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const auto read = ReadAttrCacheBytes(std::as_bytes(std::span(data, size)));
  if (!read) return 0;
  const std::vector<CachedVolume>& volumes = *read;
  size_t entries = 0;
  for (const CachedVolume& volume : volumes) entries += volume.entries.size();
  if (volumes.size() * 14 + entries * 33 > size) std::abort();
  const std::string written = AttrCacheBytes(volumes);
  const auto again = ReadAttrCacheBytes(std::as_bytes(std::span(written))).value();
  if (again.size() != volumes.size()) std::abort();
  for (size_t i = 0; i < again.size(); ++i) {
    if (again[i].entries.size() != volumes[i].entries.size()) std::abort();
    if (again[i].letter != volumes[i].letter || again[i].journalId != volumes[i].journalId) std::abort();
    for (size_t entry = 0; entry < again[i].entries.size(); ++entry) {
      if (!IsSame(again[i].entries[entry], volumes[i].entries[entry])) std::abort();
    }
  }
  return 0;
}
