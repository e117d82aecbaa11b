// What the size and date cells of a row say, from what is known without the disk.
#pragma once

#include <string>

#include "index/search_engine.h"

namespace quilmark {

struct RowCells {
  std::u16string size, modified, created;
  bool isMissing = false;  // something is not known yet, and can be asked for
};

RowCells CellsOfRow(const MatchItem& hit);

}  // namespace quilmark
