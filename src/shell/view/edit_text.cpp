#include "shell/view/edit_text.h"

#include <algorithm>

namespace quilmark {

std::u16string FirstLine(std::u16string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(u" \t\r\n"), text.size()));
  std::u16string line(text.substr(0, text.find_first_of(u"\r\n")));
  std::replace(line.begin(), line.end(), u'\t', u' ');
  return line;
}

bool OpenPatiently(const std::function<bool()>& open, const std::function<void()>& pause) {
  constexpr int kTries = 5;
  for (int tries = 1; !open(); ++tries) {
    if (tries == kTries) return false;
    pause();
  }
  return true;
}

size_t WordStart(std::u16string_view text, size_t caret) {
  text = text.substr(0, caret);
  const size_t last = text.find_last_not_of(u' ');
  if (last == std::u16string_view::npos) return 0;
  const size_t blank = text.find_last_of(u" \\/", last == 0 ? 0 : last - 1);
  return blank == std::u16string_view::npos || blank >= last ? 0 : blank + 1;
}

}  // namespace quilmark
