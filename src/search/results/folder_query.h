// The direct contents of one folder, from the index.
#pragma once

#include <string_view>

#include "search/results/search_session.h"

namespace quilmark {

// Appends the records of `volume` whose path is `folder` (normalised) and one name more, ignoring case.
// Waits for the volume's lock, and lets go of it every 256 records so that a writer gets its turn.
void ListFolderFromIndex(VolumeIndex& volume, std::u16string_view folder, ResultSet& results);

}  // namespace quilmark
