// What the tip of a cell says.
#pragma once

#include <cstdint>
#include <string>

#include "shell/search/columns.h"

namespace quilmark {

struct Tip {
  std::u16string text;     // empty: no tip
  bool isMissing = false;  // the text is not known yet, and can be asked for

  bool operator==(const Tip&) const = default;
};

// Of a row of the shown results, in the icon views whatever the column; empty for a row that is none.
// Interface thread.
Tip TipOfCell(ViewMode view, int64_t row, int column);

}  // namespace quilmark
