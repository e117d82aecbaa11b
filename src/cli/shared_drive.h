// One drive letter for many folders, where there are more folders than letters: the letter stands for
// the root of the host, of which the folders alone are walked.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "index/tables/volume_index.h"
#include "platform/files.h"

namespace quilmark {

// Host paths of the folders that share a letter, as PathFromHost gives them. Set once, before the walk.
void SetSharedFolders(std::vector<std::u16string> folders);

// Lists a folder of that drive: one in or below a shared folder as it is, one on the way to a shared
// folder with only what leads there. False for any other folder, and for one that cannot be read. A
// FolderSource: several threads call it at once.
[[nodiscard]] bool ListShared(std::u16string_view path, FolderListing& listing);

// Takes the shared folders themselves and those on the way to them out of the search, as the root of any
// other drive is no hit either. Once, when the drive is built. Takes indexLock.
void HideSharedRoots(VolumeIndex& volume);

}  // namespace quilmark
