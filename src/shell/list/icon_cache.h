// The icons of files, folders and drives, and the thumbnails of pictures, of all rows.
//
// The system is slow to give them and has few handles for them: so they are kept, and those that were
// wanted longest ago go. A picture that could not be had is asked for again after ten seconds.
#pragma once

#include <boost/unordered/unordered_flat_map.hpp>

#include <cstdint>
#include <optional>
#include <vector>

#include "platform/clock.h"
#include "platform/locks.h"
#include "shell/list/icon_key.h"
#include "shell/list/icon_lru.h"
#include "shell/list/icon_source.h"

namespace quilmark {

inline constexpr size_t kMostIcons = 2'048;
inline constexpr uint64_t kNoThumbnailMs = 10'000;

// What is known of a thumbnail without asking for it.
struct KnownThumbnail {
  IconRef icon;            // null where there is none yet
  bool isRefused = false;  // it was asked for in vain: a paint alone does not ask again
};

// Any thread. The lock is a leaf, and is not held while the source is asked: two threads may load the
// same icon, and the first to come keeps it.
class IconCache {
 public:
  // `source` outlives the cache and whoever uses it; `nowMs` gives milliseconds, never going back.
  explicit IconCache(IconSource& source, uint64_t (*nowMs)() = TickMs);

  // Loads the folders' own icons: before the first row is painted. Asks the source.
  void Prepare();

  // The icon, asked of the source where it is not kept. Null for an empty path, and where the source has
  // none. A folder that is no drive gives the small icon of all folders for a size below 21. Where a
  // thumbnail is wanted and there is none, the icon of the file.
  IconRef GetIcon(const IconRequest& request);

  // The icon if it is kept. Never asks the source.
  IconRef CachedIcon(const IconRequest& request);

  // Whether CachedIcon gives one.
  bool HasCachedIcon(const IconRequest& request) { return CachedIcon(request) != nullptr; }

  // What is known of the picture of a file. Never asks the source.
  KnownThumbnail ThumbnailOf(std::u16string_view path, int size);

  // The icon that folders share, at the system's size that fits one of `size` pixels. Never asks the
  // source; null before Prepare.
  IconRef FolderIcon(int size) const;

  // Lets go of all icons, the folders' own among them, and forgets what could not be had. Prepare is to
  // follow where rows are painted any more.
  void Clear();

  // Lets go of half the icons where the process holds so many objects that the system might soon give
  // none. To be called after each paint.
  void TrimGdiIfNeeded();

 private:
  struct Loaded {
    IconRef icon;
    bool isThumbnail = false;
  };
  Loaded Load(const IconRequest& request, bool triesPicture);
  Loaded LoadPicture(const IconRequest& request);
  IconRef LoadIcon(const IconRequest& request);
  IconRef Keep(const IconRequest& request, uint64_t key, bool triedPicture, const Loaded& loaded);
  bool IsRefused(uint64_t key) const;
  void Refuse(uint64_t key);

  IconSource& source_;
  uint64_t (*nowMs_)();

  mutable OrderedLock lock_{LockRank::kLeaf, "iconCache"};  // guards what follows
  IconLru icons_{kMostIcons};
  boost::unordered_flat_map<uint64_t, uint64_t> noThumbnail_;  // when it was refused, by key
  IconRef smallFolder_, largeFolder_;
};

}  // namespace quilmark
