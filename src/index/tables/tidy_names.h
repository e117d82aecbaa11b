// Names that came later get their own place.
//
// A renamed file's name goes to a table of its own, and the former one stays behind as dead text that
// every search reads. Once there are many, the names are written anew, a chunk of the pool behind each
// block of the journal: each text in its record's own place, the former ones left out, the signatures of
// what is alive. Records and their numbers stay as they are. See docs/decisions/0001-index-tables.md.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "index/tables/volume_index.h"

namespace quilmark {

// One step: writes a chunk anew, where the names that came later have become a sixteenth of all or that
// has been begun. Searches go on beside it; indexLock is taken shared for what takes long, and then
// exclusively for a moment. A step that another edit came between is left for the next block, as one for
// which there is no memory. One thread a volume; indexLock not held.
void TidyNames(VolumeIndex& volume);

// The two halves of TidyNames.
//
// A chunk as it is to be, or no chunk where none has names apart any more.
struct TidyStep {
  uint64_t edits = 0;  // VolumeIndex::edits
  size_t number = 0;   // of the chunk
  NameChunk chunk;     // no text: nothing to write
  uint32_t firstText = 0, lastText = 0;
  size_t firstMark = 0;
  std::vector<const char16_t*> marks;  // into the chunk
  uint32_t firstPage = 0;
  NameSignatures signatures;  // whole pages, of text firstPage * kTextsPerPage on
  RecordBits initials;        // as signatures
  RenamedNames former;        // the table that the last step empties
};

// Empty where nothing is to be done, and where memory runs out. indexLock held, shared or exclusive.
[[nodiscard]] std::optional<TidyStep> PrepareTidying(const VolumeIndex& volume);

// Puts the step's tables in place, and the former ones into `step`, to be freed without the lock. False
// if records were edited since: nothing is changed. indexLock held exclusively. No memory is asked for.
[[nodiscard]] bool FinishTidying(VolumeIndex& volume, TidyStep& step);

// The spelling of a record's name and where it stood, to tell later whether the file was renamed.
struct SeenName {
  const char16_t* text = nullptr;
  uint32_t moves = 0;  // Tidying::moves
  size_t hash = 0;
};

// How `record`, which is of the volume, is named now. indexLock held, shared or exclusive.
SeenName SeeName(const VolumeIndex& volume, const FileRecord& record);

// Whether the record still has the name that was seen. A name that came back counts as the same.
// indexLock held, shared or exclusive.
[[nodiscard]] bool IsNameAsSeen(const VolumeIndex& volume, const FileRecord& record,
                                const SeenName& seen);

}  // namespace quilmark
