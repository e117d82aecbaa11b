// What a folder holds, for comparing.
#pragma once

#include <set>
#include <string>
#include <string_view>
#include <utility>

#include "platform/files.h"

namespace quilmark {

enum class EntryKind { kFile, kFolder };

using EntrySet = std::set<std::pair<std::u16string, EntryKind>>;

inline EntrySet EntriesOf(const FolderListing& listing) {
  EntrySet entries;
  for (const FolderEntry& entry : listing.entries) {
    entries.emplace(listing.NameOf(entry), entry.isDirectory ? EntryKind::kFolder : EntryKind::kFile);
  }
  return entries;
}

// The entries of a folder that can be listed; else the one entry "cannot be listed".
inline EntrySet EntriesIn(std::u16string_view folder) {
  FolderListing listing;
  if (!ListFolder(folder, listing)) return {{u"cannot be listed", EntryKind::kFile}};
  return EntriesOf(listing);
}

}  // namespace quilmark
