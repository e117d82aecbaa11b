#include "cli/shared_drive.h"

#include <algorithm>
#include <map>
#include <mutex>
#include <optional>
#include <set>
#include <utility>

namespace quilmark {

namespace {

// Without a backslash at the end; the root of the host is empty.
std::vector<std::u16string> sharedFolders;

std::u16string_view WithoutDrive(std::u16string_view path) {
  return path.size() < 2 || path[1] != u':' ? path : path.substr(2);
}

// The part of `path` behind `folder` and a backslash, or nothing where it is the folder itself.
std::optional<std::u16string_view> BehindFolder(std::u16string_view path, std::u16string_view folder) {
  if (!path.starts_with(folder)) return std::nullopt;
  if (path.size() == folder.size()) return u"";
  if (path[folder.size()] != u'\\') return std::nullopt;
  return path.substr(folder.size() + 1);
}

enum class Place { kElsewhere, kOnTheWay, kRoot, kBelow };

Place PlaceOf(std::u16string_view hostPath) {
  Place place = Place::kElsewhere;
  for (const std::u16string& folder : sharedFolders) {
    if (const auto behind = BehindFolder(hostPath, folder)) {
      place = std::max(place, behind->empty() ? Place::kRoot : Place::kBelow);
    } else if (BehindFolder(folder, hostPath)) {
      place = std::max(place, Place::kOnTheWay);
    }
  }
  return place;
}

void ListTheWay(std::u16string_view hostPath, FolderListing& listing) {
  std::set<std::u16string_view> names;
  for (const std::u16string& folder : sharedFolders) {
    if (const auto behind = BehindFolder(folder, hostPath))
      names.insert(behind->substr(0, behind->find(u'\\')));
  }
  for (const std::u16string_view name : names) {
    listing.entries.push_back({.nameOffset = static_cast<uint32_t>(listing.names.size()),
                               .nameLength = static_cast<uint16_t>(name.size()),
                               .isDirectory = true});
    listing.names += name;
  }
}

}  // namespace

void SetSharedFolders(std::vector<std::u16string> folders) {
  for (std::u16string& folder : folders) {
    while (folder.ends_with(u'\\')) folder.pop_back();
  }
  sharedFolders = std::move(folders);
}

bool ListShared(std::u16string_view path, FolderListing& listing) {
  const std::u16string_view hostPath = WithoutDrive(path);
  switch (PlaceOf(hostPath)) {
    case Place::kBelow:
      return ListFolder(path, listing);
    case Place::kRoot:  // by the host's own path, as it may be a link
      return ListFolder(hostPath.empty() ? u"\\" : hostPath, listing);
    case Place::kOnTheWay:
      listing.Clear();
      ListTheWay(hostPath, listing);
      return true;
    case Place::kElsewhere:
      break;
  }
  listing.Clear();
  return false;
}

void HideSharedRoots(VolumeIndex& volume) {
  const std::scoped_lock lock(volume.indexLock);
  std::map<uint64_t, std::u16string> paths;  // of the folders on the way, by reference
  if (!volume.records.empty()) paths[volume.records[0].parentFrn] = u"";
  for (uint32_t i = 0; i < volume.records.size(); ++i) {
    const FileRecord& record = volume.records[i];
    const auto parent = record.isDirectory ? paths.find(record.parentFrn) : paths.end();
    if (parent == paths.end()) continue;
    std::u16string path = parent->second + u"\\" + std::u16string(NameOf(record));
    const Place place = PlaceOf(path);
    if (place != Place::kOnTheWay && place != Place::kRoot) continue;
    paths[record.frn] = std::move(path);
    MarkDeleted(volume, i);
  }
}

}  // namespace quilmark
