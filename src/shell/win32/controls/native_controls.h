// The controls of the views, made from what the views name and known to them by number alone.
#pragma once

#include <windows.h>

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "shell/win32/controls/control_host.h"

namespace quilmark {

// Interface thread. The controls end with the window that they stand in. A number that no control has
// is passed over, and so is what a control's kind does not have.
class NativeControls {
 public:
  // Makes them, hidden, behind those that are there. Their order is that of the Tab key. The window is
  // asked how high rows of a combo are before it is done: it must hand on its messages from now on.
  void Make(HWND parent, std::span<const ControlSpec> specs, ControlHost& host);

  // Moves, shows and enables what must be. A control that is not named is hidden. One that is hidden or
  // disabled gives the focus to the window.
  void Place(std::span<const ControlPlace> places);

  // None of these is told of to the host.
  void SetText(int id, const std::u16string& text);  // of an edit or a tag
  void SetItems(int id, const std::vector<std::u16string>& items, int chosen);
  void SetDay(int id, int day);  // 0 changes nothing

  void Enable(int id);
  void RedrawTags() const;
  // The host has other fonts: the former ones are no control's any more when it returns.
  void TakeFonts();

  bool Focus(int id);  // false, and nothing done, where it is hidden or disabled
  bool IsEnabled(int id) const;
  int DayOf(int id) const;      // what a field for a day shows: that of the system where none was given
  HWND HandleOf(int id) const;  // null without such a control

  // What the window got of WM_COMMAND, WM_NOTIFY, WM_DRAWITEM and WM_MEASUREITEM. Empty: not of these
  // controls, or nothing to answer.
  std::optional<LRESULT> TakeMessage(UINT message, WPARAM wParam, LPARAM lParam);

 private:
  struct Control {
    ControlKind kind = ControlKind::kTag;
    int id = 0;
    int listWidth = 0;
    HWND window = nullptr;
  };
  const Control* Find(int id) const;
  const Control* Find(int id, ControlKind kind) const;
  HWND MakeOne(HWND parent, const ControlSpec& spec);
  void FillOne(const Control& control, const ControlSpec& spec);
  void PlaceOne(const Control& control, const ControlPlace& place);

  std::optional<LRESULT> TakeCommand(int id, int code);
  std::optional<LRESULT> TakeComboCode(const Control& combo, int code);
  std::optional<LRESULT> TakeNotice(const NMHDR& notice);
  std::optional<LRESULT> Draw(const DRAWITEMSTRUCT& item) const;
  std::optional<LRESULT> Measure(MEASUREITEMSTRUCT& item) const;
  std::optional<LRESULT> Tell(const ControlEvent& event);

  std::vector<Control> controls_;
  ControlHost* host_ = nullptr;
  bool isWriting_ = false;  // the program changes a control itself
};

}  // namespace quilmark
