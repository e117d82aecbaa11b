#include "shell/actions/path_lookup.h"

#include <bitset>
#include <shared_mutex>
#include <string_view>
#include <unordered_map>

#include "platform/shutdown.h"
#include "platform/text.h"
#include "search/results/glance.h"
#include "shell/actions/recent_file.h"

namespace quilmark {

namespace {

constexpr size_t kRootUnits = 2, kShortestPath = 3;
constexpr uint32_t kShutdownStep = 65'536;  // records between two looks

// A path that is not found yet.
struct Wanted {
  std::u16string path;  // comparable
  size_t place = 0;     // of its answer

  std::u16string_view Root() const { return std::u16string_view(path).substr(0, kRootUnits); }
  std::u16string_view Name() const { return std::u16string_view(path).substr(path.rfind(u'\\') + 1); }
};

// Which folded names may be among the wanted: by their length, first and last unit. Nearly every name
// fails here, and costs no hash.
class NameSieve {
 public:
  void Add(std::u16string_view name) { mayBe_.set(BitOf(name)); }
  bool MayHold(std::u16string_view name) const { return mayBe_.test(BitOf(name)); }

 private:
  static constexpr size_t kBits = 8'192;
  static size_t BitOf(std::u16string_view name) {
    if (name.empty()) return 0;
    return (name.size() * 7 + name.front() * size_t{131} + name.back() * size_t{31}) % kBits;
  }
  std::bitset<kBits> mayBe_;
};

// One pass over a volume. `wanted` outlives it.
class VolumePass {
 public:
  VolumePass(VolumeIndex& volume, const std::vector<Wanted>& wanted, std::vector<FoundPath>& found)
      : volume_(volume), found_(found) {
    const std::u16string root = FoldText(volume.drive);
    for (const Wanted& one : wanted) {
      if (one.Root() != root || IsFound(one)) continue;
      sieve_.Add(one.Name());
      byName_.emplace(one.Name(), &one);
    }
  }

  void Run() {
    size_t missing = byName_.size();
    if (missing == 0 || !IsSearchable(volume_)) return;
    const std::shared_lock lock(volume_.indexLock);
    const uint32_t count = volume_.records.size();
    for (uint32_t index = 0; index < count && missing > 0; ++index) {
      if (index % kShutdownStep == 0 && ShutdownRequested) return;
      const FileRecord& record = volume_.records[index];
      const std::u16string_view name = FoldedNameOf(record);
      if (sieve_.MayHold(name) && !record.deleted) missing -= TakeIfWanted(index, name);
    }
  }

 private:
  bool IsFound(const Wanted& one) const { return found_[one.place].item.volume != nullptr; }

  // How many of the wanted were found.
  size_t TakeIfWanted(uint32_t index, std::u16string_view name) {
    size_t taken = 0;
    const auto [first, last] = byName_.equal_range(name);
    for (auto it = first; it != last; ++it) {
      const Wanted& one = *it->second;
      if (IsFound(one)) continue;
      BuildPathInto(volume_, index, path_);
      if (ComparablePath(path_) != one.path) continue;
      found_[one.place] = {.item = {&volume_, index}, .build = volume_.builds};
      ++taken;
    }
    return taken;
  }

  VolumeIndex& volume_;
  std::vector<FoundPath>& found_;
  NameSieve sieve_;
  std::unordered_multimap<std::u16string_view, const Wanted*> byName_;
  std::u16string path_;  // used again for each candidate
};

}  // namespace

std::vector<FoundPath> FindPaths(const SearchEngine& engine, std::span<const std::u16string> paths) {
  std::vector<FoundPath> found(paths.size());
  std::vector<Wanted> wanted;
  for (size_t place = 0; place < paths.size(); ++place) {
    if (paths[place].size() >= kShortestPath) wanted.push_back({ComparablePath(paths[place]), place});
  }
  if (wanted.empty()) return found;
  for (VolumeIndex* const volume : CopyVolumes(engine)) VolumePass(*volume, wanted, found).Run();
  return found;
}

}  // namespace quilmark
