// The editor over a name in the list. What is done with the name its host decides.
#pragma once

#include <windows.h>

#include "shell/view/effects.h"
#include "shell/win32/controls/control_host.h"

namespace quilmark {

// Interface thread. Enter and Tab are told of as kEnter, Escape as kEscape, and the loss of the focus as
// kLeft or kLeftProgram, each with the text of that moment. The host closes it, within such an event
// too. No event comes of being closed; but one comes of a message box that the host opens within
// another.
class NameEditor {
 public:
  static constexpr int kId = kNameEditor;  // of its events

  NameEditor() = default;
  NameEditor(const NameEditor&) = delete;
  NameEditor& operator=(const NameEditor&) = delete;

  // Takes the focus. One that is open keeps its text and place, and all of it is selected.
  void Open(HWND parent, const EditorPlace& place, ControlHost& host);
  void Move(const Rect& place);
  void Close();

  bool IsOpen() const { return edit_ != nullptr; }
  bool HasFocus() const;
  void TakeFocus();
  void SelectAll();
  HWND Handle() const { return edit_; }  // null where it is closed

 private:
  static LRESULT CALLBACK Procedure(HWND edit, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                    DWORD_PTR reference);
  void Tell(ControlEvent::Kind kind, HWND edit);
  void Centre();

  HWND edit_ = nullptr;
  ControlHost* host_ = nullptr;
};

}  // namespace quilmark
