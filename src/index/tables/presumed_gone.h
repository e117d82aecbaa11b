// Records that are marked deleted before the journal has told of it, because the program itself has
// deleted the file, or the folder above it.
//
// A folder that went to the Recycle Bin takes its contents along under their own references: the journal
// tells of the folder's new name, and nothing of what lies below. So the folder's record, when it lives
// again, brings back those that were marked with it, but for what the journal has called deleted since.
#pragma once

#include <cstdint>
#include <span>

#include "index/tables/volume_index.h"

namespace quilmark {

// Marks the records deleted, and those of all that lies below them, and forgets their attributes. An
// index past the end and a record that is deleted are passed over. indexLock held exclusively; takes the
// attribute locks. Looks at every record of the volume if one of them is a folder. std::bad_alloc where
// memory runs out; some may be marked then.
void PresumeGone(VolumeIndex& volume, std::span<const uint32_t> indices);

// The journal calls the file deleted: nothing brings its record back, nor, for a folder, those that were
// marked with it. indexLock held exclusively.
void ConfirmGone(VolumeIndex& volume, uint64_t frn);

// The journal has given the file a name, and life to its record: those that were marked with it live
// again. indexLock held exclusively. std::bad_alloc where memory runs out.
void WithdrawGone(VolumeIndex& volume, uint64_t frn);

}  // namespace quilmark
