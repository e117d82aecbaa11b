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

// Interface thread. The controls end with the window that they stand in. A call for a number that no
// control has, or for something that a control of its kind does not have, changes nothing.
class NativeControls {
 public:
  // Makes controls, hidden, behind those that are there; their order is that of the Tab key. The system
  // asks the window how high rows of a combo are before this returns, so the window must hand its
  // messages to TakeMessage by now.
  void Make(HWND parent, std::span<const ControlSpec> specs, ControlHost& host);

  // Moves, shows and enables controls as `places` says. A control that is not named is hidden. One that
  // is hidden or disabled gives the focus to the window.
  void Place(std::span<const ControlPlace> places);

  // Nothing that the next calls change is reported to the host.

  // Sets the text of an edit or a tag.
  void SetText(int id, const std::u16string& text);

  // Replaces the items of a combo and chooses one.
  void SetItems(int id, const std::vector<std::u16string>& items, int chosen);

  // Sets the day of a field; 0 changes nothing.
  void SetDay(int id, int day);

  // Lets a control take input.
  void Enable(int id);

  // Has all tags painted again.
  void RedrawTags() const;

  // Gives the controls the present fonts of the host. No control holds a former one when it returns.
  void TakeFonts();

  // Gives a control the focus. Does nothing for one that is hidden or disabled, and gives false.
  bool Focus(int id);

  // True if the control takes input.
  bool IsEnabled(int id) const;

  // The day that a field shows, which is today where none was given.
  int DayOf(int id) const;

  // The window of a control; null for a number without one.
  HWND HandleOf(int id) const;

  // Answers WM_COMMAND, WM_NOTIFY, WM_DRAWITEM and WM_MEASUREITEM that its window got. Empty for a
  // message of another control, and where there is nothing to answer.
  [[nodiscard]] std::optional<LRESULT> TakeMessage(UINT message, WPARAM wParam, LPARAM lParam);

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
