// Index of a volume without a change journal, by a walk over its folders.
//
// A snapshot: records in depth-first order, each folder before its contents, under made-up references
// that start at kFirstSyntheticFrn in every build. One thread appends; further ones only read folders
// ahead of it.
#pragma once

#include <string_view>

#include "index/build/folder_reader.h"
#include "index/tables/volume_index.h"
#include "platform/files.h"

namespace quilmark {

// Folders deeper than this below the root are listed as entries and not entered.
inline constexpr int kDeepestWalk = 128;

// How a walk reads; the program uses the defaults.
struct WalkOptions {
  FolderSource source = ListFolder;  // called from several threads at once
  unsigned threads = 0;  // that list folders, the walking one included; 0: as many as the machine likes
};

// Empties and refills the volume, indexLock held exclusively throughout, `busy` set. True if an entry
// was found; else the volume is not valid. A folder that cannot be read is left out. Ends early at
// ShutdownRequested.
[[nodiscard]] bool BuildWalkVolume(VolumeIndex& volume, std::u16string_view drive,
                                   std::u16string_view fileSystemName, const WalkOptions& options = {});

}  // namespace quilmark
