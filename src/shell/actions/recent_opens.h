// The files that were opened last through the program, which an empty search box shows.
#pragma once

#include <atomic>
#include <cstdint>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "index/engine/search_engine.h"
#include "platform/locks.h"
#include "search/results/search_session.h"
#include "shell/actions/recent_file.h"

namespace quilmark {

// The list and its file. Ranked by the last open alone: the newest first, at most kMostRecentOpens. The
// list's lock is a leaf, held for a look or an edit and never over a file or a volume: the interface
// thread does not wait for a job that looks millions of names through. Any thread.
//
// Two threads never mix in the file, and what another copy of the program has put there since is kept:
// it comes behind the entries of this list. What the other has taken out goes from this list too, unless
// it was opened here since.
class RecentOpens {
 public:
  // Takes in what the file holds, behind what was opened already.
  void Load();

  // Puts the entry in front, instead of one of the same record or path. Saves.
  void Record(RecentOpenEntry entry);

  // Empties the list and the file.
  void Clear();

  // Gives the entry of the old path the new one, if there is one. Saves.
  void Rename(std::u16string_view oldPath, std::u16string_view newPath);

  // Has the entries of these paths, and of all below them, looked up by path from now on: the records
  // may live again under names of the Recycle Bin.
  void ForgetPlaces(const std::vector<std::u16string>& paths);

  // Rewrites the file. A failure is ignored: the next save makes up for it.
  void Save();

  // The entries whose files are in the index now, in their order; those of drives that are gone stay in
  // the list. A job's work: it may look through all names of a volume.
  [[nodiscard]] ResultSet Collect(const SearchEngine& engine);

  // A copy of the list.
  [[nodiscard]] std::vector<RecentOpenEntry> Entries() const;

 private:
  void TakeFileLocked();
  void WriteFileLocked();
  void Remember(const std::vector<RecentOpenEntry>& resolved, uint64_t forgotten);

  mutable OrderedLock lock_{LockRank::kLeaf, "recentOpens"};
  std::vector<RecentOpenEntry> entries_;  // lock_
  std::atomic<uint64_t> forgotten_ = 0;   // how often places were; raised under lock_
  std::mutex filing_;                     // held over a read or a rewrite of the file; before lock_
  std::u16string fileText_;               // filing_: as it was read or written last
  bool forgetsFile_ = false;  // filing_: what it holds was cleared, and is still to be written over
};

// That of the program. Lives as long as the process.
RecentOpens& TheRecentOpens();

// Loads the list on the job "load_recent_opens", which posts WM_RECENT_LOADED to the main window unless
// the program ends.
void LoadRecentOpensAsync();

// Puts the item in front of the list and saves it. An item without a path and one that was deleted are
// passed over. Waits for a writer of the volume. Interface thread.
void RecordRecentOpen(const MatchItem& item);

// Forgets all of them, in the file too. Interface thread.
void ClearRecentOpens();

// Searches anew for an empty search box, unless it goes on showing the whole index. Interface thread.
void RefreshRecentViewIfNeeded();

// Follows a file that has another name or place now. Interface thread.
void UpdateRecentAfterRename(std::u16string_view oldPath, std::u16string_view newPath);

// What an empty search box shows. A job's work.
[[nodiscard]] ResultSet CollectRecentItems();

}  // namespace quilmark
