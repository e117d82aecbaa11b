// The system as the start and the end of the process see it.
#pragma once

#include <windows.h>

#include "platform/win32/file_handle.h"
#include "shell/app/process_port.h"

namespace quilmark {

// Windows behind a ProcessPort.
class Win32Process : public ProcessPort {
 public:
  // What the entry point of the program was given.
  Win32Process(HINSTANCE instance, std::u16string commandLine, int showCommand);

  bool HasScaleAwareness() override;
  bool SetScaleAwareness(int context) override;
  uint32_t SystemDpi() override;
  void Pause(uint32_t ms) override;
  uint16_t UiLanguage() override;
  std::optional<std::vector<std::u16string>> Arguments() override;
  std::u16string CommandLineText() override;
  bool TakeMutex(std::u16string_view name) override;
  void CloseMutex() override;
  void EnablePrivilege(std::u16string_view name) override;
  bool ShellIsUp() override;
  bool IsAdministrator() override;
  void ShowBox(BoxIcon icon, const std::u16string& title, const std::u16string& text) override;
  bool FindRunningWindow() override;
  void LetRunningTakeForeground() override;
  void RaiseRunningWindow() override;
  void AskRunningToShow() override;
  std::u16string HotkeyText(uint32_t modifiers, uint32_t key) override;
  void RegisterWindowClass() override;
  std::optional<Rect> WorkArea() override;
  Rect PrimaryScreen() override;
  bool CreateMainWindow(Point place, int width, int height, const std::u16string& title) override;
  void ShowCreatedWindow(bool hidden) override;
  void RunMessageLoop() override;

 private:
  HINSTANCE instance_;
  std::u16string commandLine_;
  int showCommand_;
  UniqueKernelObject mutex_;
  HWND running_ = nullptr;
};

}  // namespace quilmark
