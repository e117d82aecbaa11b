// Bytes below each folder, from the sizes that are known of its files.
#pragma once

#include <cstdint>

#include "index/tables/volume_index.h"

namespace quilmark {

// Adds up the files of a volume along their parents: at most 64 of them for each file. From the sizes of
// a scan where there are any, else from the attribute cache, which covers what was seen so far. Holds
// indexLock shared meanwhile: searches go on.
void RebuildFolderSizes(VolumeIndex& volume);

enum class IfDirty { kLeave, kRebuild };

// True if the folder has a total.
bool GetFolderSize(VolumeIndex& volume, uint64_t frn, uint64_t& out, IfDirty ifDirty);

// Takes over the sizes of a scan and rebuilds the totals.
void InstallMftSizes(VolumeIndex& volume, FrnMap<MftSize> sizes);

}  // namespace quilmark
