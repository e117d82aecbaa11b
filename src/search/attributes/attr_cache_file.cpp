#include "search/attributes/attr_cache_file.h"

#include <algorithm>
#include <limits>
#include <mutex>
#include <optional>
#include <shared_mutex>

#include "config/attr_counters.h"
#include "config/config_directory.h"
#include "config/log.h"
#include "platform/bytes.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "platform/format.h"
#include "search/attributes/attr_positions.h"
#include "search/attributes/attr_replay.h"

namespace quilmark {

AttrCacheFile& TheAttrCacheFile() {
  // Never destroyed: a job may save until the process is gone.
  static auto* const file = new AttrCacheFile;
  return *file;
}

namespace {

constexpr std::string_view kMagic = "HCSV";
constexpr uint32_t kVersion = 1, kMostEntries = 1'000'000;
constexpr size_t kFileHeader = 12, kVolumeHeader = 14, kEntrySize = 33;
constexpr uint64_t kLongestFile = uint64_t{26} * kMostEntries * kEntrySize + 1'000;

using CachedEntries = decltype(CachedVolume::entries);

std::u16string FilePath() { return ConfigPath(u"attrcache.v1.bin"); }

template <typename Integer>
void Append(std::string& bytes, Integer value) {
  for (size_t i = 0; i < sizeof value; ++i) {
    bytes += static_cast<char>(static_cast<uint64_t>(value) >> (8 * i) & 0xFF);
  }
}

void AppendEntry(std::string& bytes, uint64_t frn, const AttrEntry& entry) {
  Append(bytes, frn);
  Append(bytes, entry.size);
  Append(bytes, entry.modified);
  Append(bytes, entry.created);
  Append(bytes, static_cast<uint8_t>(entry.valid));
}

AttrEntry EntryAt(std::span<const std::byte> bytes, size_t offset) {
  return {.size = static_cast<int64_t>(LoadLe<uint64_t>(bytes, offset + 8)),
          .modified = LoadLe<uint64_t>(bytes, offset + 16),
          .created = LoadLe<uint64_t>(bytes, offset + 24),
          .valid = bytes[offset + 32] != std::byte{0}};
}

// Live NTFS volumes that have a drive.
std::vector<VolumeIndex*> CacheableVolumes(const SearchEngine& engine) {
  std::vector<VolumeIndex*> volumes;
  for (VolumeIndex* const volume : CopyVolumes(engine)) {
    if (volume->valid && IsNtfs(*volume) && !volume->drive.empty()) volumes.push_back(volume);
  }
  return volumes;
}

bool HasDates(const AttrEntry& entry) { return entry.modified != 0 || entry.created != 0; }

CachedVolume CopyEntries(const VolumeIndex& volume) {
  CachedVolume cached{.letter = volume.drive[0], .journalId = volume.journalId, .entries = {}};
  const std::shared_lock lock(volume.attrLock);
  cached.entries.reserve(std::min<size_t>(volume.attrs.size(), kMostEntries));
  for (const auto& [frn, entry] : volume.attrs) {
    // More than a reader takes would cost the volume all of them.
    if (cached.entries.size() >= kMostEntries) break;
    if (entry.valid && !entry.stale && HasDates(entry)) cached.entries.emplace_back(frn, entry);
  }
  return cached;
}

// The journal's identity decides between volumes of one letter; a new one does not reject the entries.
VolumeIndex* VolumeFor(const std::vector<VolumeIndex*>& volumes, const CachedVolume& cached) {
  VolumeIndex* byLetter = nullptr;
  for (VolumeIndex* const volume : volumes) {
    if (volume->drive[0] != cached.letter) continue;
    if (volume->journalId == cached.journalId) return volume;
    if (byLetter == nullptr) byLetter = volume;
  }
  return byLetter;
}

// What no file system says; a damaged entry costs that entry.
bool IsPlausible(const AttrEntry& entry) {
  constexpr FileTime kLast = std::numeric_limits<int64_t>::max();
  return entry.size >= 0 && entry.modified <= kLast && entry.created <= kLast;
}

// indexLock held. A file that was deleted since the build is still named by its reference.
bool IsThere(const VolumeIndex& volume, uint64_t frn) {
  const auto index = IndexOf(volume.frnToIndex, volume.records, frn);
  return index && *index >= 0 && !volume.records[static_cast<uint32_t>(*index)].deleted;
}

uint64_t ForgetEntries(VolumeIndex& volume, size_t roomFor) {
  const std::shared_lock indexLock(volume.indexLock);
  const std::scoped_lock attrLock(volume.attrLock);
  volume.attrs.clear();
  volume.attrs.reserve(roomFor);
  return volume.builds;
}

// indexLock held. What was read from the disk meanwhile is newer than the file, but for what could not
// be read.
uint64_t AddEntries(VolumeIndex& volume, const CachedEntries& entries) {
  const std::scoped_lock lock(volume.attrLock);
  uint64_t added = 0;
  for (const auto& [frn, entry] : entries) {
    const auto [place, isNew] = volume.attrs.emplace(frn, entry);
    added += isNew ? 1 : 0;
    if (!HasDates(place->second)) place->second = entry;
  }
  return added;
}

// Those of the entries whose files are there. Empty where the volume has been built again.
std::optional<uint64_t> GiveSlice(VolumeIndex& volume, uint64_t build,
                                  std::span<const CachedEntries::value_type> entries) {
  const std::shared_lock lock(volume.indexLock);
  if (volume.builds != build) return std::nullopt;
  CachedEntries held;
  held.reserve(entries.size());
  for (const auto& [frn, entry] : entries) {
    if (IsPlausible(entry) && IsThere(volume, frn)) held.emplace_back(frn, entry);
  }
  return AddEntries(volume, held);
}

// A slice at a time: the whole takes long, and rows are painted meanwhile.
uint64_t GiveEntries(VolumeIndex& volume, const CachedVolume& cached) {
  constexpr size_t kSlice = 8'192;
  const uint64_t build = ForgetEntries(volume, cached.entries.size());
  uint64_t kept = 0;
  for (auto rest = std::span(cached.entries); !rest.empty();) {
    const size_t size = std::min(kSlice, rest.size());
    const auto taken = GiveSlice(volume, build, rest.first(size));
    if (!taken) break;
    kept += *taken;
    rest = rest.subspan(size);
  }
  volume.folderSizesDirty = true;
  return kept;
}

// Set when the load has come to its end, also by an exception: not while volumes still lack what it
// brings them. A load that the end of the program cuts short brought less than the file has, and leaves
// it.
struct LoadedMark {
  ~LoadedMark() {
    if (!ShutdownRequested) TheAttrCacheFile().isLoaded = true;
  }
};

void LogCacheMetric(std::u16string_view what, uint64_t ms, uint64_t entries, uint64_t bytes) {
  LogPerfMetric(
      FormatText(u"%ls ms=%llu path=%ls entries=%llu bytes=%llu", what, ms, FilePath(), entries, bytes));
}

std::vector<AttrReplay> LeaveOutChanged(const SearchEngine& engine, std::vector<CachedVolume>& cached) {
  const auto positions = LoadAttrPositions();
  std::vector<AttrReplay> replays;
  if (!positions) return replays;
  const auto volumes = CacheableVolumes(engine);
  for (CachedVolume& one : cached) {
    VolumeIndex* const volume = VolumeFor(volumes, one);
    if (volume == nullptr) continue;
    if (const auto replay = LeaveOutChanged(*volume, one, *positions)) replays.push_back(*replay);
  }
  return replays;
}

// AttrCacheFile::saving held.
void Save(SearchEngine& engine) {
  AttrCacheFile& file = TheAttrCacheFile();
  if (!file.isLoaded) return;
  const uint64_t start = TickMs();
  const uint64_t generation = AttrCacheGeneration;
  std::vector<CachedVolume> volumes;
  std::vector<AttrPosition> positions;
  uint64_t entries = 0;
  for (const VolumeIndex* const volume : CacheableVolumes(engine)) {
    // Before the entries: what changes meanwhile is gone over again.
    if (const auto position = PositionOf(*volume)) positions.push_back(*position);
    volumes.push_back(CopyEntries(*volume));
    entries += volumes.back().entries.size();
  }
  const std::string bytes = AttrCacheBytes(volumes);
  if (!WriteMarkedFileBytes(FilePath(), bytes, kFileHeader)) return;
  // Behind the cache: an older position costs only the entries in between.
  SaveAttrPositions(positions);
  const uint64_t ms = TickMs() - start;
  AttrCounters().cacheSaveMillis += ms;
  file.AttrLastSaveMs = ms;
  if (generation > file.AttrSavedGeneration) file.AttrSavedGeneration = generation;
  LogCacheMetric(u"cache_save", ms, entries, bytes.size());
}

}  // namespace

std::string AttrCacheBytes(const std::vector<CachedVolume>& volumes) {
  size_t size = kFileHeader;
  for (const CachedVolume& volume : volumes) size += kVolumeHeader + volume.entries.size() * kEntrySize;
  std::string bytes(kMagic);
  bytes.reserve(size);
  Append(bytes, kVersion);
  Append(bytes, static_cast<uint32_t>(volumes.size()));
  for (const CachedVolume& volume : volumes) {
    Append(bytes, static_cast<uint16_t>(volume.letter));
    Append(bytes, volume.journalId);
    Append(bytes, static_cast<uint32_t>(volume.entries.size()));
    for (const auto& [frn, entry] : volume.entries) AppendEntry(bytes, frn, entry);
  }
  return bytes;
}

std::optional<std::vector<CachedVolume>> ReadAttrCacheBytes(std::span<const std::byte> bytes) {
  std::vector<CachedVolume> volumes;
  if (bytes.size() < kFileHeader) return std::nullopt;
  const std::string_view magic(reinterpret_cast<const char*>(bytes.data()), kMagic.size());
  if (magic != kMagic || LoadLe<uint32_t>(bytes, 4) != kVersion) return std::nullopt;
  const uint32_t count = LoadLe<uint32_t>(bytes, 8);
  size_t offset = kFileHeader;
  for (uint32_t i = 0; i < count && Fits(bytes.size(), offset, kVolumeHeader); ++i) {
    CachedVolume volume{.letter = static_cast<char16_t>(LoadLe<uint16_t>(bytes, offset)),
                        .journalId = LoadLe<uint64_t>(bytes, offset + 2),
                        .entries = {}};
    const uint64_t entries = LoadLe<uint32_t>(bytes, offset + 10);
    offset += kVolumeHeader;
    const uint64_t whole = std::min<uint64_t>(entries, (bytes.size() - offset) / kEntrySize);
    if (entries <= kMostEntries) {
      volume.entries.reserve(whole);
      for (uint64_t entry = 0; entry < whole; ++entry) {
        const size_t at = offset + entry * kEntrySize;
        volume.entries.emplace_back(LoadLe<uint64_t>(bytes, at), EntryAt(bytes, at));
      }
      volumes.push_back(std::move(volume));
    }
    if (whole < entries) break;  // a short file ends here
    offset += entries * kEntrySize;
  }
  return volumes;
}

uint64_t TakeCachedVolumes(SearchEngine& engine, const std::vector<CachedVolume>& cached) {
  const std::vector<VolumeIndex*> volumes = CacheableVolumes(engine);
  uint64_t kept = 0;
  for (const CachedVolume& one : cached) {
    if (VolumeIndex* const volume = VolumeFor(volumes, one)) kept += GiveEntries(*volume, one);
  }
  return kept;
}

void LoadAttrCache(SearchEngine& engine) {
  const LoadedMark mark;
  const uint64_t start = TickMs();
  const auto bytes = ReadFileBytes(FilePath(), kLongestFile);
  if (!bytes) return;
  auto cached = ReadAttrCacheBytes(std::as_bytes(std::span(*bytes)));
  if (!cached) return;
  const auto replays = LeaveOutChanged(engine, *cached);
  const uint64_t kept = TakeCachedVolumes(engine, *cached);
  for (const AttrReplay& replay : replays) MarkChangedSince(replay);
  const uint64_t ms = TickMs() - start;
  AttrCounters().cacheLoadMillis += ms;
  TheAttrCacheFile().AttrSavedGeneration = ++AttrCacheGeneration;
  LogCacheMetric(u"cache_load", ms, kept, bytes->size());
}

void SaveAttrCache(SearchEngine& engine) {
  const std::scoped_lock lock(TheAttrCacheFile().saving);
  // Asked under the lock: a job that waited for the last save finds no volumes any more.
  if (!ShutdownRequested) Save(engine);
}

void SaveAttrCacheAtEnd(SearchEngine& engine) {
  const std::scoped_lock lock(TheAttrCacheFile().saving);
  Save(engine);
}

void WriteMissingAttrCache(SearchEngine& engine) {
  if (!IsExistingPath(FilePath())) SaveAttrCache(engine);
}

}  // namespace quilmark
