// What the tip of a cell says.
#pragma once

#include <cstdint>
#include <string>

#include "shell/search/columns.h"

namespace quilmark {

// What a tip says.
struct Tip {
  std::u16string text;     // empty: no tip
  bool isMissing = false;  // the text is not known yet, and can be asked for

  bool operator==(const Tip&) const = default;
};

// The tip of a cell of the shown set. Names and paths give the whole path, and so does every part of a
// row in the icon views. Empty for a row that is not there. Interface thread.
Tip TipOfCell(ViewMode view, int64_t row, int column);

}  // namespace quilmark
