// A file that was chosen in a list, as it was then. Interface thread.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>

#include "index/engine/search_engine.h"

namespace quilmark {

// What tells the file from another that has its place in the index later.
struct ChosenFile {
  MatchItem hit;
  std::u16string path;
  uint64_t frn = 0, parentFrn = 0;
  uint64_t build = 0;  // VolumeIndex::builds
};

// The file of a hit as it is now. Waits for whoever writes to the volume, so that no chosen row is
// passed over. Empty for a record that is deleted, and for a volume that is lost or is being built.
[[nodiscard]] std::optional<ChosenFile> SeeFile(const MatchItem& hit);

// True if the hit still leads to that file. Waits likewise.
[[nodiscard]] bool IsStillThere(const ChosenFile& file);

// The record of the folder that holds the file. Empty where there is none that is alive. Waits likewise.
[[nodiscard]] std::optional<MatchItem> FolderOf(const ChosenFile& file);

// Marks the files deleted in the index, and all that lies below them, unless another file has the place
// by now or the journal has told of another name. The journal's own news of them then changes nothing
// that is true. Waits for whoever reads the volume. Searches no more find them when it returns.
void MarkDeletedInIndex(std::span<const ChosenFile> files);

}  // namespace quilmark
