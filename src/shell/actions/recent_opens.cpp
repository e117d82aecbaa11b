#include "shell/actions/recent_opens.h"

#include <algorithm>
#include <optional>
#include <shared_mutex>
#include <unordered_set>
#include <utility>

#include "config/config_directory.h"
#include "config/settings_file.h"
#include "index/engine/volume_list.h"
#include "platform/background.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "platform/text.h"
#include "search/query/query.h"
#include "search/results/glance.h"
#include "search/results/search_pipeline.h"
#include "shell/actions/path_lookup.h"
#include "shell/view/window_ids.h"

namespace quilmark {

namespace {

constexpr std::u16string_view kFileName = u"recent.ini";

using RecentList = std::vector<RecentOpenEntry>;

RecentList::iterator FindPathIn(RecentList& entries, std::u16string_view path) {
  const std::u16string wanted = ComparablePath(path);
  return std::find_if(entries.begin(), entries.end(), [&](const RecentOpenEntry& entry) {
    return ComparablePath(entry.path) == wanted;
  });
}

bool HasPath(RecentList& entries, std::u16string_view path) {
  return FindPathIn(entries, path) != entries.end();
}

void CutToMost(RecentList& entries) {
  if (entries.size() > kMostRecentOpens) entries.resize(kMostRecentOpens);
}

bool IsSameFile(const RecentOpenEntry& one, const RecentOpenEntry& other) {
  return one.volume != nullptr && one.volume == other.volume && one.record == other.record &&
         one.build == other.build;
}

std::unordered_set<std::u16string> ComparablePaths(const std::vector<std::u16string>& paths) {
  std::unordered_set<std::u16string> comparable;
  for (const std::u16string& path : paths) comparable.insert(ComparablePath(path));
  return comparable;
}

bool IsAtOrBelow(std::u16string path, const std::unordered_set<std::u16string>& places) {
  for (;;) {
    if (places.contains(path)) return true;
    const size_t end = path.rfind(u'\\');
    if (end == std::u16string::npos) return false;
    path.resize(end);
  }
}

// Whether the record that was seen is still the file. A volume that was built again has given the number
// to another, and one whose drive is gone shows nothing.
bool IsInIndex(const RecentOpenEntry& entry, const std::vector<VolumeIndex*>& volumes) {
  // A volume that is not of the engine any more is not looked at.
  if (std::find(volumes.begin(), volumes.end(), entry.volume) == volumes.end()) return false;
  const VolumeIndex& volume = *entry.volume;
  if (!IsSearchable(volume)) return false;
  const std::shared_lock lock(volume.indexLock);
  if (volume.builds != entry.build) return false;
  const auto kind = KindOf(volume, entry.record);
  return kind && !kind->isDeleted;
}

// Looks up the entries that are not `isKnown`, and says for each whether its file is in the index now.
std::vector<bool> ResolveOthers(const SearchEngine& engine, RecentList& entries,
                                std::vector<bool> isKnown) {
  std::vector<std::u16string> paths;
  for (size_t i = 0; i < entries.size(); ++i) {
    if (!isKnown[i]) paths.push_back(entries[i].path);
  }
  const std::vector<FoundPath> found = FindPaths(engine, paths);
  for (size_t i = 0, next = 0; i < entries.size(); ++i) {
    if (isKnown[i]) continue;
    const FoundPath& place = found[next++];
    if (place.item.volume == nullptr) continue;
    entries[i].volume = place.item.volume;
    entries[i].record = place.item.index;
    entries[i].build = place.build;
    isKnown[i] = true;
  }
  return isKnown;
}

// Empty where there is no file to be recorded.
std::optional<RecentOpenEntry> SeeForRecent(const MatchItem& item) {
  if (item.volume == nullptr || !IsSearchable(*item.volume)) return std::nullopt;
  const VolumeIndex& volume = *item.volume;
  const std::shared_lock lock(volume.indexLock);
  const auto kind = KindOf(volume, item.index);
  if (!kind || kind->isDeleted) return std::nullopt;
  return RecentOpenEntry{.volume = item.volume,
                         .record = item.index,
                         .build = volume.builds,
                         .openedAt = TickMs(),
                         .path = BuildPath(volume, item.index)};
}

}  // namespace

void RecentOpens::Load() {
  const std::scoped_lock filing(filing_);
  TakeFileLocked();
}

void RecentOpens::Record(RecentOpenEntry entry) {
  if (entry.path.empty()) return;
  {
    const std::scoped_lock lock(lock_);
    const std::u16string path = ComparablePath(entry.path);
    std::erase_if(entries_, [&](const RecentOpenEntry& other) {
      return IsSameFile(entry, other) || ComparablePath(other.path) == path;
    });
    entries_.insert(entries_.begin(), std::move(entry));
    CutToMost(entries_);
  }
  Save();
}

void RecentOpens::Clear() {
  const std::scoped_lock filing(filing_);
  forgetsFile_ = true;
  TakeFileLocked();
  {
    const std::scoped_lock lock(lock_);
    entries_.clear();
  }
  WriteFileLocked();
}

void RecentOpens::Rename(std::u16string_view oldPath, std::u16string_view newPath) {
  {
    const std::scoped_lock lock(lock_);
    if (!HasPath(entries_, oldPath)) return;
    const bool isOnlyInCase = ComparablePath(oldPath) == ComparablePath(newPath);
    const auto replaced = isOnlyInCase ? entries_.end() : FindPathIn(entries_, newPath);
    if (replaced != entries_.end()) entries_.erase(replaced);
    FindPathIn(entries_, oldPath)->path = newPath;
  }
  Save();
}

void RecentOpens::ForgetPlaces(const std::vector<std::u16string>& paths) {
  const std::unordered_set<std::u16string> gone = ComparablePaths(paths);
  const std::scoped_lock lock(lock_);
  ++forgotten_;
  for (RecentOpenEntry& entry : entries_) {
    if (IsAtOrBelow(ComparablePath(entry.path), gone)) entry.volume = nullptr;
  }
}

void RecentOpens::Save() {
  const std::scoped_lock filing(filing_);
  TakeFileLocked();
  WriteFileLocked();
}

ResultSet RecentOpens::Collect(const SearchEngine& engine) {
  const uint64_t forgotten = forgotten_;
  RecentList entries = Entries();
  const std::vector<VolumeIndex*> volumes = CopyVolumes(engine);
  std::vector<bool> isKnown;
  for (const RecentOpenEntry& entry : entries) isKnown.push_back(IsInIndex(entry, volumes));
  isKnown = ResolveOthers(engine, entries, std::move(isKnown));
  ResultSet items;
  for (size_t i = 0; i < entries.size(); ++i) {
    if (isKnown[i]) items.push_back({entries[i].volume, entries[i].record});
  }
  Remember(entries, forgotten);
  return items;
}

std::vector<RecentOpenEntry> RecentOpens::Entries() const {
  const std::scoped_lock lock(lock_);
  return entries_;
}

// Takes in what another copy of the program has changed in the file: adds what was neither there before
// nor is in the list, and takes out what was there, as it stands in the list, and is not there any more.
// `filing_` held.
void RecentOpens::TakeFileLocked() {
  std::u16string text = ReadSettingsFile(kFileName);
  if (text == fileText_ || IsUnreadSettingsFile(kFileName)) return;
  if (forgetsFile_) {
    fileText_ = std::move(text);
    return;
  }
  // A file that is gone was not cleared: a cleared one stands there empty.
  auto former = IsExistingPath(ConfigPath(kFileName)) ? ReadRecentOpens(fileText_) : RecentList();
  auto standing = ReadRecentOpens(text);
  fileText_ = std::move(text);
  const std::scoped_lock lock(lock_);
  std::erase_if(entries_, [&](const RecentOpenEntry& entry) {
    const auto known = FindPathIn(former, entry.path);
    return known != former.end() && known->openedAt == entry.openedAt && !HasPath(standing, entry.path);
  });
  for (RecentOpenEntry& entry : standing) {
    if (HasPath(former, entry.path) || HasPath(entries_, entry.path)) continue;
    entries_.push_back(std::move(entry));
  }
  CutToMost(entries_);
}

// `filing_` held.
void RecentOpens::WriteFileLocked() {
  std::u16string text = RecentOpensText(Entries());
  // Nobody waits for the disk when a file is opened: what a system that ends at once takes away is the
  // latest entry.
  if (!WriteSettingsFile(kFileName, text, Flushing::kLeftToSystem)) return;
  fileText_ = std::move(text);
  forgetsFile_ = false;
}

// Keeps the records of entries that are still in the list as they were looked up.
void RecentOpens::Remember(const std::vector<RecentOpenEntry>& resolved, uint64_t forgotten) {
  const std::scoped_lock lock(lock_);
  if (forgotten_ != forgotten) return;  // what was seen before a deletion
  for (const RecentOpenEntry& seen : resolved) {
    for (RecentOpenEntry& entry : entries_) {
      if (entry.openedAt != seen.openedAt || entry.path != seen.path) continue;
      entry.volume = seen.volume;
      entry.record = seen.record;
      entry.build = seen.build;
    }
  }
}

RecentOpens& TheRecentOpens() {
  static auto* const list = new RecentOpens;
  return *list;
}

void LoadRecentOpensAsync() {
  RunBackground("load_recent_opens", [] {
    TheRecentOpens().Load();
    PostUnlessEnding(TheSearch().hooks.window, WM_RECENT_LOADED, 0, 0);
  });
}

void RecordRecentOpen(const MatchItem& item) {
  if (auto entry = SeeForRecent(item)) TheRecentOpens().Record(std::move(*entry));
}

void ClearRecentOpens() { TheRecentOpens().Clear(); }

void RefreshRecentViewIfNeeded() {
  const SearchSession& session = TheSearch();
  std::u16string text = session.hooks.readSearchBox ? session.hooks.readSearchBox() : std::u16string();
  TrimQuery(text);
  // The search takes its work to a job by itself.
  if (text.empty() && !session.SuppressRecentView) DoSearchAsync(u"", false, true);
}

void UpdateRecentAfterRename(std::u16string_view oldPath, std::u16string_view newPath) {
  TheRecentOpens().Rename(oldPath, newPath);
}

ResultSet CollectRecentItems() { return TheRecentOpens().Collect(Engine()); }

}  // namespace quilmark
