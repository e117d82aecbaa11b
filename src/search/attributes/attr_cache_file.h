// attrcache.v1.bin: the attribute cache between runs. See docs/formats.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <mutex>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "index/engine/search_engine.h"
#include "platform/background.h"

namespace quilmark {

// What is known of the file. Lives as long as the process; any thread.
struct AttrCacheFile {
  std::atomic<uint64_t> AttrSavedGeneration = 0;  // AttrCacheGeneration at the last save or load
  std::atomic<uint64_t> AttrLastSaveMs = 0;       // how long the last save of this run took; 0: none yet
  // Set once the file of the last run has been looked for and taken over: what is saved before would be
  // less than it holds.
  std::atomic<bool> isLoaded = false;
  // Held over a save. The one at the end of the program waits for one that a job has begun: two writers
  // would mix in the file.
  std::mutex saving;
  SingleJob saveJob;  // the jobs that save share it: a second one would write the same
  std::atomic<uint64_t> afterSortMs = 0;  // TickMs of the last save after a sort
};

// That of the program.
AttrCacheFile& TheAttrCacheFile();

// One volume of a file.
struct CachedVolume {
  char16_t letter = 0;
  uint64_t journalId = 0;
  std::vector<std::pair<uint64_t, AttrEntry>> entries;  // by file reference number
};

// The bytes of a file with these volumes, which a reader takes as far as each has at most a million
// entries.
std::string AttrCacheBytes(const std::vector<CachedVolume>& volumes);

// Volumes of a file's bytes as far as they are whole. A volume of more than a million entries is passed
// over, and what lies behind it is read. Empty for a file of another kind or version.
[[nodiscard]] std::optional<std::vector<CachedVolume>> ReadAttrCacheBytes(
    std::span<const std::byte> bytes);

// Gives the entries to the volumes with their letter, those of files that still exist. The number kept.
uint64_t TakeCachedVolumes(SearchEngine& engine, const std::vector<CachedVolume>& cached);

// From the file in the configuration directory, with a metric line. A file that is missing or foreign
// counts as absent. Sets isLoaded, whatever came of it, unless the program ends meanwhile.
void LoadAttrCache(SearchEngine& engine);

// To that file, with a metric line; nothing before isLoaded. A failed save is ignored: the next one
// writes all of it again. For jobs: does nothing once the program ends. Waits for no volume that is
// being built.
void SaveAttrCache(SearchEngine& engine);

// The last save of the program, made before the volumes go: the same, also when the program ends.
void SaveAttrCacheAtEnd(SearchEngine& engine);

// SaveAttrCache where there is no file yet.
void WriteMissingAttrCache(SearchEngine& engine);

}  // namespace quilmark
