// attrcache.v1.bin: the attribute cache between runs. See docs/formats.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "index/search_engine.h"

namespace quilmark {

// How often AttrCacheGeneration had been raised when the cache was last saved or loaded.
extern std::atomic<uint64_t> AttrSavedGeneration;

// Set once the file of the last run has been looked for: what is saved before would be less than it
// holds.
extern std::atomic<bool> isAttrCacheLoaded;

// The bytes of a file, volume after volume.
struct CachedVolume {
  char16_t letter = 0;
  uint64_t journalId = 0;
  std::vector<std::pair<uint64_t, AttrEntry>> entries;  // by file reference number
};
std::string AttrCacheBytes(const std::vector<CachedVolume>& volumes);

// Volumes of a file's bytes as far as they are whole. A volume of more than a million entries is passed
// over, and what lies behind it is read. Empty for a file of another kind or version.
std::optional<std::vector<CachedVolume>> ReadAttrCacheBytes(std::span<const std::byte> bytes);

// Gives the entries to the volumes with their letter, those of files that still exist. The number kept.
uint64_t TakeCachedVolumes(SearchEngine& engine, const std::vector<CachedVolume>& cached);

// From and to the file in the configuration directory; a metric line each. A failed save is ignored; a
// file that is missing or foreign counts as absent.
void LoadAttrCache(SearchEngine& engine);
void SaveAttrCache(SearchEngine& engine);
bool HasAttrCacheFile();

}  // namespace quilmark
