// What a row of the list says.
#pragma once

#include <string>

#include "index/engine/search_engine.h"

namespace quilmark {

// The texts of a row.
struct RowText {
  std::u16string name, folder;
  bool isDirectory = false;
  bool isDeleted = false;  // its file is gone, and the row stands until the next search
  bool isLater = false;    // a writer holds the volume: nothing could be read yet

  bool operator==(const RowText&) const = default;
};

// The texts of a hit. Empty for a hit of a volume that is gone or is being built anew. Waits no longer
// than a moment for the lock of the volume. Interface thread.
RowText TextOfRow(const MatchItem& hit);

// Folder and name as one path; empty for an empty row.
std::u16string PathOfRow(const RowText& row);

}  // namespace quilmark
