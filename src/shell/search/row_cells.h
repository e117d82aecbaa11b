// What the size and date cells of a row say, from what is known without the disk.
#pragma once

#include <string>

#include "index/engine/search_engine.h"

namespace quilmark {

// Texts of the cells of a row, empty for a row that is gone.
struct RowCells {
  std::u16string size, modified, created;
  bool isMissing = false;  // something is not known yet, and can be asked for
  bool isLater = false;    // the attributes are being written: to be painted again in a while
};

// Never asks the disk, and waits no longer than a moment for the locks of the volume. Interface thread.
RowCells CellsOfRow(const MatchItem& hit);

}  // namespace quilmark
