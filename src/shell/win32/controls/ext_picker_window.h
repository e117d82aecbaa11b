// The window that chooses file types for a content search.
#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <vector>

#include "shell/settings/ext_picker.h"
#include "shell/win32/controls/control_host.h"
#include "shell/win32/gdi/gdi.h"
#include "shell/win32/gdi/gdi_fonts.h"

namespace quilmark {

// One at a time, over the main window and in its theme. Interface thread. Its keys are answered by its
// controls' own procedures, since the message loop knows nothing of dialogs.
class ExtPickerWindow final : public PickerScreen, public ControlHost {
 public:
  ~ExtPickerWindow() override { CloseQuietly(); }

  // Shows the window, or brings up the one that is open, its list read again. `main`, whose window is
  // `owner`, and `picker` outlive it; `chinese` chooses the face of its fonts.
  void Open(HWND owner, const ControlHost& main, bool chinese, ExtPicker& picker);

  // Takes the colours of the main window anew.
  void WearTheme();

  // Closes it without giving anybody the focus; no effect where none is open.
  void CloseQuietly();

  HWND Handle() const { return window_; }

  void ShowRows(const std::vector<PickerRow>& rows) override;
  std::vector<size_t> SelectedRows() override;
  std::u16string FieldText() override;
  void EmptyField() override;
  void Tell(const std::u16string& text) override;
  bool Ask(const std::u16string& question) override;
  void OpenFile(const std::u16string& path) override;
  void Close() override;

  ViewContext Context() const override;
  const GdiFonts& Fonts() const override { return fonts_; }
  bool IsDark() const override { return main_->IsDark(); }
  bool OnControl(const ControlEvent&) override { return false; }
  void PaintControl(Canvas& canvas, const ControlPicture& control) const override;

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
  static LRESULT CALLBACK KeyProcedure(HWND control, UINT message, WPARAM wParam, LPARAM lParam,
                                       UINT_PTR, DWORD_PTR reference);
  std::optional<LRESULT> OnPaintMessage(UINT message, WPARAM wParam, LPARAM lParam);
  LRESULT OnMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
  LRESULT OnNotice(const NMHDR& notice);
  LRESULT OnColor(HDC dc, HWND control);
  void OnActivation(bool isActive);
  bool TakeKeyOf(HWND control, WPARAM key, bool isRepeat);
  void Run(PickerCommand command) { RunPickerCommand(*picker_, *this, command); }
  void MakeControls();
  void TakeFonts();
  void Place();
  void TakeScale(uint32_t dpi, const RECT& place);

  HWND window_ = nullptr, owner_ = nullptr;
  HWND focus_ = nullptr;  // the control that had it when the window was left
  const ControlHost* main_ = nullptr;
  ExtPicker* picker_ = nullptr;
  GdiFonts fonts_;
  UniqueBrush ground_, well_;
  uint32_t dpi_ = 96;
  bool isChinese_ = false;
  bool isFilling_ = false;  // the list: its notices are not the user's
};

}  // namespace quilmark
