// The one main window: its handles, and what the decisions of the interface ask of it.
#pragma once

#include <windows.h>

#include <optional>
#include <string>

#include "shell/app/app_state.h"
#include "shell/app/theme.h"
#include "shell/app/window_end.h"
#include "shell/win32/controls/ext_picker_window.h"
#include "shell/win32/controls/name_editor.h"
#include "shell/win32/controls/native_controls.h"
#include "shell/win32/controls/row_tip.h"
#include "shell/win32/gdi/back_buffer.h"
#include "shell/win32/system/app_icons.h"
#include "shell/win32/system/foreign_messages.h"
#include "shell/win32/system/system_services.h"
#include "shell/win32/system/system_shell.h"
#include "shell/win32/system/tray_icon.h"

namespace quilmark {

inline constexpr wchar_t kMainWindowClass[] = L"QUILMARK_MAIN";

// Interface thread. There is one, which outlives the window of the system: see TheWindow.
class MainWindow : public WindowPort,
                   public WindowEndPort,
                   public ThemePort,
                   public PickerPort,
                   public ControlHost {
 public:
  // Null before the window is made.
  HWND Handle() const { return window_; }

  void StartTimer(uint32_t id, uint32_t delayMs) override;
  void StopTimer(uint32_t id) override;
  void SetTitle(const std::u16string& title) override;
  void SetStatus(const std::u16string& text) override;
  void SetText(int id, const std::u16string& text) override { controls.SetText(id, text); }
  void PlaceCaret(int id, size_t units) override;
  std::u16string TextOf(int id) override;
  void SetItems(int id, const std::vector<std::u16string>& items, int chosen) override;
  void EnableControl(int id) override { controls.Enable(id); }
  void RedrawTags() override { controls.RedrawTags(); }
  std::optional<WindowPlacement> Placement() override;
  bool IsVisible() override;
  bool SystemShutsDown() override;
  void TrimSelf() override;
  void TrimSelfInJob() override;
  void TrimOthersInJob() override;
  void CarryOut(const Effects& effects) override;
  void TellError(const std::u16string& text) override;
  void Hide() override;
  void ShowAndRaise() override;
  void Destroy() override;
  void PostClose() override;
  TrayIconState AddOrUpdateTrayIcon() override;

  void CloseOtherWindows() override { picker.CloseQuietly(); }
  void RemoveTrayIcon() override;
  void UnregisterHotkeys() override;
  void ReleaseBrushes() override;
  void ReleaseBackBuffer() override;
  void ReleaseFonts() override;
  void QuitMessageLoop() override;

  void OpenPickerWindow(ExtPicker& of) override { picker.Open(window_, *this, App().uiIsChinese, of); }

  bool IsOpen() override { return IsWindow(window_) != FALSE; }
  std::optional<SystemColors> HighContrast() override;
  void WearTheme(bool isDark) override;
  void WearColors() override;

  ViewContext Context() const override;
  const GdiFonts& Fonts() const override { return CurrentFonts(); }
  bool IsDark() const override { return isDark_; }
  bool OnControl(const ControlEvent& event) override;
  bool TakeKey(uint32_t key, bool isRepeat) override;
  void PaintControl(Canvas& canvas, const ControlPicture& control) const override;

  // Steps of the creation, which CreateWindowParts takes in its order.

  // Takes the handle, and makes the back buffer.
  void OpenBackBuffer(HWND window);

  // Takes the scale of the window's screen, and resizes the window where it is another than the
  // system's.
  void TakeScale();

  // Makes the controls of all views, and the hidden ones that other programs ask.
  void MakeControls();

  // Gives the program its ways to the system.
  void OpenServices();

  // Lays the shown view out anew, and places its controls.
  void Relayout();

  // Paints what is invalid, by way of the back buffer: the answer to WM_PAINT.
  void Paint();

  // Makes the fonts for the present scale, and gives them to the controls.
  void RemakeFonts();

  // Loads the icons for the present scale.
  void RemakeIcons();

  // Gives the back buffer the size of the client area.
  void RecreateBackBuffer();

  // Has a part of the client area painted with the next WM_PAINT; an empty one changes nothing.
  void Invalidate(const Rect& place);

  NativeControls controls;
  NameEditor editor;
  ExtPickerWindow picker;
  RowTip tip;
  BackBuffer backBuffer;
  WindowIcons icons;
  TrayIcon tray;
  SystemServices services{tray};
  SystemShell shell;
  ForeignMessages foreign;
  UniqueBrush classBrush;     // of the window's class
  UniqueBrush well;           // inside the edits
  UniqueBrush scrollTrack;    // made on first use
  std::u16string status;      // as it was set last
  int traySize = 0;           // pixels of its picture
  uint64_t paints = 0;        // since the start
  uint64_t rangeUpdates = 0;  // of the scrollbars, since the start

 private:
  void PlaceControls();
  void CarryOutEditor(const Effects& effects);
  void TakeFocus(Focus focus);
  void SyncBars();
  void OpenMenu(const Menu& menu);
  void RunCommand(uint16_t id);

  HWND window_ = nullptr;
  bool isDark_ = false;
};

// The main window of the program.
MainWindow& TheWindow();

// A message as a window procedure gets it.
struct Message {
  HWND window = nullptr;
  UINT number = 0;
  WPARAM wParam = 0;
  LPARAM lParam = 0;
};

// Handles one message. Empty: not taken, DefWindowProcW follows.
using MessageHandler = std::optional<LRESULT> (*)(AppState& app, MainWindow& window,
                                                  const Message& message);

// Gets the messages that the window itself does not take. Null but in the program of the window tests,
// which sets it before the window is made.
extern MessageHandler extraMessages;

// Makes the class of the main window known; `window` owns its brush.
void RegisterMainWindowClass(MainWindow& window, HINSTANCE instance);

// Makes the window of the system, hidden, at that outer place. Null where the system makes none.
[[nodiscard]] HWND OpenMainWindow(HINSTANCE instance, const RECT& rect, const wchar_t* title);

// Makes all that the window consists of and starts the engine: the answer to WM_CREATE.
void CreateWindowParts(AppState& app, MainWindow& window, HWND handle);

}  // namespace quilmark
