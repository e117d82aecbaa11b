// Bytes below each folder, from the sizes that are known of its files.
#pragma once

#include <cstdint>
#include <optional>

#include "index/tables/volume_index.h"

namespace quilmark {

// Adds up the files of a volume along their parents: at most 64 of them for each file. From the sizes of
// a scan where there are any, else from the attribute cache, which covers what was seen so far. Holds
// indexLock shared meanwhile: searches go on.
void RebuildFolderSizes(VolumeIndex& volume);

enum class IfDirty : uint8_t { kLeave, kRebuild };

// The total of the folder in bytes; empty if it has none, as one without a byte below it. Takes
// folderSizesLock; kRebuild adds up first where sizes have arrived since.
[[nodiscard]] std::optional<uint64_t> GetFolderSize(VolumeIndex& volume, uint64_t frn, IfDirty ifDirty);

// Takes over the sizes of a scan and rebuilds the totals.
void InstallMftSizes(VolumeIndex& volume, FrnMap<MftSize> sizes);

}  // namespace quilmark
