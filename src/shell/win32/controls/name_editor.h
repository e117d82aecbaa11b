// The editor over a name in the list. Its host decides what is done with the name.
#pragma once

#include <windows.h>

#include "shell/view/effects.h"
#include "shell/win32/controls/control_host.h"

namespace quilmark {

// Interface thread. It reports Enter and Tab as kEnter, Escape as kEscape, and the loss of the focus as
// kLeft or kLeftProgram, each with the text of that moment. The host closes it, also within such an
// event. Closing reports nothing; but a message box that the host opens within an event takes the focus,
// which is reported as any other loss.
class NameEditor {
 public:
  static constexpr int kId = kNameEditor;  // of its events

  NameEditor() = default;
  NameEditor(const NameEditor&) = delete;
  NameEditor& operator=(const NameEditor&) = delete;

  // Opens the editor, which takes the focus. One that is open keeps its text and place, and all of its
  // text is selected. `host` outlives it.
  void Open(HWND parent, const EditorPlace& place, ControlHost& host);

  // Puts an open editor somewhere else in its parent.
  void Move(const Rect& place);

  // Closes it, and reports nothing.
  void Close();

  // True from Open to Close, or to the end of its parent.
  bool IsOpen() const { return edit_ != nullptr; }

  // True if the keys go to it.
  bool HasFocus() const;

  // Gives the focus to an open editor.
  void TakeFocus();

  // Selects the whole text of an open editor.
  void SelectAll();

  // Null where it is closed.
  HWND Handle() const { return edit_; }

 private:
  static LRESULT CALLBACK Procedure(HWND edit, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                    DWORD_PTR reference);
  void Tell(ControlEvent::Kind kind, HWND edit);
  void Centre();

  HWND edit_ = nullptr;
  ControlHost* host_ = nullptr;
};

}  // namespace quilmark
