// Paths in the one form in which they are compared.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>

#include "platform/text.h"

namespace quilmark {

// The path with slashes turned to backslashes, folded.
inline std::u16string ComparablePath(std::u16string_view path) {
  std::u16string comparable = FoldText(path);
  std::replace(comparable.begin(), comparable.end(), u'/', u'\\');
  return comparable;
}

}  // namespace quilmark
