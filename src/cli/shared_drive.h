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

// Lists a folder of that drive: what is in or below one of them as it is, and on the way to them only
// what leads there. A FolderSource.
bool ListShared(std::u16string_view path, FolderListing& listing);

// Takes the folders themselves and those on the way to them out of the search, as the root of any other
// drive is no hit either. Takes indexLock.
void HideSharedRoots(VolumeIndex& volume);

}  // namespace quilmark
