// The tip of a row, which says what does not fit into its cell.
#pragma once

#include <windows.h>

#include <string>

#include "shell/view/view_context.h"

namespace quilmark {

// Interface thread. It ends with its window.
class RowTip {
 public:
  // Makes the tip of a window, hidden. Once.
  void Open(HWND window);

  // Shows a text beside the cursor; an empty one hides the tip. `font` has to live as long as it is
  // shown.
  void Show(const std::u16string& text, const ViewContext& context, HFONT font);

  // Hides the tip; one that is hidden stays so.
  void Hide();

  // True while it is shown.
  bool IsShown() const { return isShown_; }

 private:
  HWND tip_ = nullptr;
  HWND owner_ = nullptr;
  bool isShown_ = false;
};

}  // namespace quilmark
