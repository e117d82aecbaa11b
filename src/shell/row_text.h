// What a row of the list says.
#pragma once

#include <string>

#include "index/search_engine.h"

namespace quilmark {

struct RowText {
  std::u16string name, folder;
};

// Of a volume that is gone or was built anew meanwhile: what is left of it. Takes the volume's lock for
// the time of a copy.
RowText TextOfRow(const MatchItem& item);

}  // namespace quilmark
