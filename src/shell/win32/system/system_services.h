// What the program as a whole asks of Windows: hotkeys, autostart, the browser.
#pragma once

#include <windows.h>

#include <functional>
#include <string>

#include "shell/app/system_port.h"
#include "shell/win32/system/tray_icon.h"

namespace quilmark {

// Interface thread. `tray` outlives it.
class SystemServices final : public SystemPort {
 public:
  explicit SystemServices(TrayIcon& tray) : tray_(tray) {}

  // Names the main window, and what gives the icon its tip anew. Before any other call.
  void Open(HWND window, std::function<void()> updateTrayTip);

  bool RegisterHotkey(HotkeyKind which, Hotkey hotkey) override;
  void UnregisterHotkey(HotkeyKind which) override;
  std::u16string HotkeyText(Hotkey hotkey) override;
  void UpdateTrayTip() override { updateTrayTip_(); }
  std::u16string Title() override;
  void FlashTitle() override;
  void FocusMainWindow() override { SetFocus(window_); }
  void ShowBalloon(const std::u16string& title, const std::u16string& text) override;
  void TellInformation(const std::u16string& title, const std::u16string& text) override;
  void SetPageText(HotkeyKind, const std::u16string&) override {}  // there is no such page yet
  void FocusPageBox(HotkeyKind) override {}

  ToolRun RunScheduler(const std::vector<std::u16string>& arguments, uint32_t mostMs) override;
  bool HasRunValue() override;
  uint32_t DeleteRunValue() override;
  std::u16string ProgramPath() override;

  void OpenAddress(const std::u16string& address) override;

 private:
  TrayIcon& tray_;
  HWND window_ = nullptr;
  std::function<void()> updateTrayTip_;
};

// The modifiers that are held now: Alt 1, Ctrl 2, Shift 4.
uint32_t HeldModifiers();

}  // namespace quilmark
