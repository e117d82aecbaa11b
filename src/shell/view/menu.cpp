#include "shell/view/menu.h"

namespace quilmark {

std::u16string MenuLabel(std::u16string_view text) {
  std::u16string label;
  for (const char16_t unit : text) {
    label.push_back(unit);
    if (unit == u'&') label.push_back(unit);
  }
  return label;
}

}  // namespace quilmark
