// The tip of a row, which says what does not fit into its cell.
#pragma once

#include <windows.h>

#include <string>

#include "shell/app_state.h"

namespace quilmark {

class RowTip {
 public:
  void Open(HWND window);
  // Beside the cursor; an empty text hides it.
  void Show(HWND window, const std::u16string& text, uint32_t dpi, HFONT font);
  void Hide();

 private:
  HWND tip_ = nullptr;
  HWND owner_ = nullptr;
};

// Of a cell of the list; empty where there is nothing to say.
std::u16string TipText(int64_t row, int column);

}  // namespace quilmark
