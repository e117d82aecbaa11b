// Any bytes as an attribute cache: what is read lies in the bytes, what is written from it reads back as
// it was, and volumes take what makes sense of files that they have, in memory as from the file.
#include <cstdint>
#include <cstdlib>
#include <utility>

#include "search/attributes/attr_cache_file.h"
#include "support/config_folder.h"

using namespace quilmark;

namespace {

bool IsSame(const std::pair<uint64_t, AttrEntry>& a, const std::pair<uint64_t, AttrEntry>& b) {
  return a.first == b.first && a.second.size == b.second.size &&
         a.second.modified == b.second.modified && a.second.created == b.second.created &&
         a.second.valid == b.second.valid;
}

// Two volumes of one letter, told apart by their journals, and one of another.
void FillEngine(SearchEngine& engine) {
  constexpr std::pair<std::u16string_view, uint64_t> kVolumes[] = {{u"C:", 1}, {u"C:", 2}, {u"D:", 3}};
  for (const auto& [drive, journalId] : kVolumes) {
    auto volume = std::make_unique<VolumeIndex>();
    volume->drive = drive;
    volume->fileSystem = u"NTFS";
    volume->journalId = journalId;
    for (uint64_t frn = 1; frn <= 8; ++frn) {
      const uint32_t index = AppendRecord(*volume, {.frn = frn, .parentFrn = 5}, u"name");
      SetIndexOf(volume->frnToIndex, volume->records, frn, index);
    }
    MarkDeleted(*volume, 7);
    AddVolume(engine, std::move(volume));
  }
}

bool HasSameAttrs(const SearchEngine& a, const SearchEngine& b) {
  for (size_t i = 0; i < a.volumes.size(); ++i) {
    const auto &one = a.volumes[i]->attrs, &other = b.volumes[i]->attrs;
    if (one.size() != other.size()) return false;
    for (const auto& entry : one) {
      const auto found = other.find(entry.first);
      if (found == other.end() || !IsSame(entry, *found)) return false;
    }
  }
  return true;
}

void CheckTaken(const SearchEngine& engine, uint64_t kept) {
  uint64_t held = 0;
  for (const auto& volume : engine.volumes) {
    held += volume->attrs.size();
    for (const auto& [frn, entry] : volume->attrs) {
      if (frn < 1 || frn > 7 || entry.size < 0) std::abort();
      if (entry.modified > INT64_MAX || entry.created > INT64_MAX) std::abort();
    }
  }
  // A volume that comes twice counts twice and is held once.
  if (held > kept) std::abort();
}

void CheckFile(const ConfigFolder& folder, std::span<const std::byte> bytes) {
  const auto read = ReadAttrCacheBytes(bytes);
  SearchEngine taken, loaded, again;
  for (SearchEngine* const engine : {&taken, &loaded, &again}) FillEngine(*engine);
  if (read) CheckTaken(taken, TakeCachedVolumes(taken, *read));

  folder.Remove("perf_metrics.log");
  folder.Write("attrcache.v1.bin", {reinterpret_cast<const char*>(bytes.data()), bytes.size()});
  LoadAttrCache(loaded);
  if (!HasSameAttrs(taken, loaded)) std::abort();
  SaveAttrCache(loaded);
  LoadAttrCache(again);
  for (const auto& volume : loaded.volumes) {
    // Entries without data, or without a date, are not worth a place in the file.
    const auto isDropped = [](const auto& entry) {
      return !entry.second.valid || (entry.second.modified == 0 && entry.second.created == 0);
    };
    erase_if(volume->attrs, isDropped);
  }
  if (!HasSameAttrs(loaded, again)) std::abort();

  folder.Remove("attrcache.v1.bin");
  WriteMissingAttrCache(again);
  if (!folder.Has("attrcache.v1.bin")) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static const ConfigFolder folder;
  CheckFile(folder, std::as_bytes(std::span(data, size)));
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
