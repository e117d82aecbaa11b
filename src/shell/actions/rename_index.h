// What the index learns of a rename that the user made here.
#pragma once

#include <optional>
#include <string>

#include "index/tables/tidy_names.h"
#include "search/results/search_session.h"

namespace quilmark {

// The file of a row as it was when its name began to be edited.
struct RenameTarget {
  VolumeIndex* volume = nullptr;
  uint32_t index = 0;
  uint64_t frn = 0;
  uint64_t build = 0;  // VolumeIndex::builds
  SeenName name;
  uint64_t parentFrn = 0;
};

// The file of a hit as it is now. Empty for a record that is gone, and where the volume cannot be read
// within a moment.
[[nodiscard]] std::optional<RenameTarget> SeeForRename(const MatchItem& hit);

// Gives the file its new name in the index: at once where the lock is free, else on the job
// "rename_in_index", which has the list painted again. Does nothing where another file has the place by
// now, or the journal has told of another name already. The journal's own record of this rename then
// changes nothing.
void RenameInIndex(const RenameTarget& target, std::u16string name);

}  // namespace quilmark
