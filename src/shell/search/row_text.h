// What a row of the list says.
#pragma once

#include <string>

#include "index/engine/search_engine.h"

namespace quilmark {

struct RowText {
  std::u16string name, folder;
  bool isDirectory = false;
  bool isLater = false;  // a writer holds the volume: nothing could be read yet

  bool operator==(const RowText&) const = default;
};

// Of a volume that is gone, or is being built anew: nothing. Interface thread.
RowText TextOfRow(const MatchItem& hit);

// Folder and name as one path; empty for a row that says nothing.
std::u16string PathOfRow(const RowText& row);

}  // namespace quilmark
