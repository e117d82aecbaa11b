#include "platform/initial_letters.h"

#include <algorithm>

#include "platform/initial_letters_table.h"

namespace quilmark {

char16_t InitialLetterOf(char16_t unit) {
  if (!IsIdeograph(unit)) return 0;
  const char letter = kInitialLetters[unit - kFirstIdeograph];
  return letter == '.' ? u'\0' : static_cast<char16_t>(letter);
}

char16_t InitialsKeyUnitOf(char16_t unit) {
  if ((unit >= u'a' && unit <= u'z') || (unit >= u'0' && unit <= u'9')) return unit;
  if (unit >= u'A' && unit <= u'Z') return static_cast<char16_t>(unit + (u'a' - u'A'));
  return InitialLetterOf(unit);
}

std::u16string_view InitialsStemOf(std::u16string_view name) {
  const std::u16string_view stem = name.substr(0, name.find(u'.'));
  return std::any_of(stem.begin(), stem.end(), IsIdeograph) ? stem : std::u16string_view();
}

}  // namespace quilmark
