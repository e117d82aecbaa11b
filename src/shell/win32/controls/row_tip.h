// The tip of a row, which says what does not fit into its cell.
#pragma once

#include <windows.h>

#include <string>

#include "shell/view/view_context.h"

namespace quilmark {

class RowTip {
 public:
  void Open(HWND window);  // once
  // Beside the cursor; an empty text hides it.
  void Show(const std::u16string& text, const ViewContext& context, HFONT font);
  void Hide();
  bool IsShown() const { return isShown_; }

 private:
  HWND tip_ = nullptr;
  HWND owner_ = nullptr;
  bool isShown_ = false;
};

}  // namespace quilmark
