#include "shell/win32/controls/window_text.h"

#include "platform/win32/wide.h"

namespace quilmark {

std::u16string TextOfWindow(HWND window, size_t limit) {
  std::u16string text(limit + 1, u'\0');
  const int length = GetWindowTextW(window, Wide(text.data()), static_cast<int>(text.size()));
  text.resize(length > 0 ? static_cast<size_t>(length) : 0);
  return text;
}

std::u16string TextOfWindow(HWND window) {
  const int length = GetWindowTextLengthW(window);
  return length > 0 ? TextOfWindow(window, static_cast<size_t>(length)) : std::u16string();
}

}  // namespace quilmark
