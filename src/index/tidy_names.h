// Names that came later get their own place.
//
// A renamed file's name goes to a table of its own, and the former one stays behind as dead text that
// every search reads. Once there are many, the names are written anew, a chunk of the pool behind each
// block of the journal: each text in its record's own place, the former ones left out, the signatures of
// what is alive. Records and their numbers stay as they are. See docs/decisions/0001-index-tables.md.
#pragma once

#include "index/volume_index.h"

namespace quilmark {

// One step: writes a chunk anew, where the names that came later have become a sixteenth of all or that
// has been begun. Some milliseconds at most; nothing where memory runs out. indexLock held exclusively.
void TidyNames(VolumeIndex& volume);

// The spelling of a record's name and where it stood, to tell later whether the file was renamed.
struct SeenName {
  const char16_t* text = nullptr;
  uint32_t moves = 0;  // Tidying::moves
  size_t hash = 0;
};

// Both: indexLock held. `record` is of the volume.
SeenName SeeName(const VolumeIndex& volume, const FileRecord& record);
bool IsNameAsSeen(const VolumeIndex& volume, const FileRecord& record, const SeenName& seen);

}  // namespace quilmark
