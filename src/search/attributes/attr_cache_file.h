// attrcache.v1.bin: the attribute cache between runs. See docs/formats.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "index/engine/search_engine.h"

namespace quilmark {

// How often AttrCacheGeneration had been raised when the cache was last saved or loaded.
extern std::atomic<uint64_t> AttrSavedGeneration;

// How long the last save of this run took, in milliseconds; 0: none has been made.
extern std::atomic<uint64_t> AttrLastSaveMs;

// Set once the file of the last run has been looked for and taken over: what is saved before would be
// less than it holds.
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

// From the file in the configuration directory, with a metric line. A file that is missing or foreign
// counts as absent. Sets isAttrCacheLoaded, whatever came of it.
void LoadAttrCache(SearchEngine& engine);

// To that file, with a metric line; nothing before isAttrCacheLoaded. A failed save is ignored. The
// first is for jobs and does nothing once the program ends, the other has the last word: the volumes go
// next. Neither waits for a volume that is being built.
void SaveAttrCache(SearchEngine& engine);
void SaveAttrCacheAtEnd(SearchEngine& engine);

// SaveAttrCache where there is no file yet.
void WriteMissingAttrCache(SearchEngine& engine);

}  // namespace quilmark
