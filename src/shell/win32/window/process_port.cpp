#include "shell/win32/window/process_port.h"

#include <shellapi.h>
#include <shlobj.h>

#include "platform/win32/system_function.h"
#include "platform/win32/wide.h"
#include "shell/app/hotkey_text.h"
#include "shell/win32/system/foreign_messages.h"
#include "shell/win32/system/hotkey_names.h"
#include "shell/win32/system/system_calls.h"
#include "shell/win32/window/main_window.h"

namespace quilmark {

namespace {

struct ArgumentListTraits {
  using Value = wchar_t**;
  static Value Empty() { return nullptr; }
  static void Close(Value list) { LocalFree(list); }
};

// SetProcessDpiAwarenessContext, where the system has it.
using SetContext = BOOL(WINAPI*)(HANDLE);
SetContext ScaleFunction() {
  return SystemCall<SetContext>(L"user32.dll", "SetProcessDpiAwarenessContext");
}

}  // namespace

Win32Process::Win32Process(HINSTANCE instance, std::u16string commandLine, int showCommand)
    : instance_(instance), commandLine_(std::move(commandLine)), showCommand_(showCommand) {}

bool Win32Process::HasScaleAwareness() { return ScaleFunction() != nullptr; }

bool Win32Process::SetScaleAwareness(int context) {
  return ScaleFunction()(reinterpret_cast<HANDLE>(static_cast<intptr_t>(context))) != FALSE;
}

uint32_t Win32Process::SystemDpi() { return DpiOfSystem(); }

void Win32Process::Pause(uint32_t ms) { Sleep(ms); }

uint16_t Win32Process::UiLanguage() { return GetUserDefaultUILanguage(); }

std::optional<std::vector<std::u16string>> Win32Process::Arguments() {
  int count = 0;
  const Unique<ArgumentListTraits> list(CommandLineToArgvW(GetCommandLineW(), &count));
  if (!list) return std::nullopt;
  std::vector<std::u16string> arguments;
  for (int i = 0; i < count; ++i) arguments.emplace_back(FromWide(list.Get()[i]));
  return arguments;
}

std::u16string Win32Process::CommandLineText() { return commandLine_; }

bool Win32Process::TakeMutex(std::u16string_view name) {
  const std::u16string terminated(name);
  UniqueKernelObject mutex(CreateMutexW(nullptr, TRUE, Wide(terminated)));
  const DWORD error = GetLastError();
  const bool isOurs = mutex && error != ERROR_ALREADY_EXISTS;
  mutex_ = isOurs ? std::move(mutex) : UniqueKernelObject();
  return isOurs;
}

void Win32Process::CloseMutex() { mutex_.Reset(); }

void Win32Process::EnablePrivilege(std::u16string_view name) {
  EnableProcessPrivilege(Wide(std::u16string(name)));
}

bool Win32Process::ShellIsUp() {
  return GetShellWindow() != nullptr && FindWindowW(L"Shell_TrayWnd", nullptr) != nullptr;
}

bool Win32Process::IsAdministrator() { return IsUserAnAdmin() != FALSE; }

void Win32Process::ShowBox(BoxIcon icon, const std::u16string& title, const std::u16string& text) {
  const UINT flags = icon == BoxIcon::kError ? MB_ICONERROR : MB_ICONINFORMATION;
  MessageBoxW(nullptr, Wide(text), Wide(title), MB_OK | flags);
}

bool Win32Process::FindRunningWindow() {
  running_ = FindWindowW(kMainWindowClass, nullptr);
  return running_ != nullptr && IsWindow(running_);
}

void Win32Process::LetRunningTakeForeground() {
  DWORD owner = 0;
  if (GetWindowThreadProcessId(running_, &owner) != 0) AllowSetForegroundWindow(owner);
}

void Win32Process::AskRunningToShow() {
  const UINT show = RegisterWindowMessageW(kShowMessage);
  if (show != 0) PostMessageW(running_, show, 0, 0);
}

void Win32Process::RaiseRunningWindow() {
  if (!IsWindow(running_)) return;
  ShowWindowAsync(running_, IsIconic(running_) ? SW_RESTORE : SW_SHOW);
  SetWindowPos(running_, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_SHOWWINDOW);
  SetForegroundWindow(running_);
  BringWindowToTop(running_);
}

std::u16string Win32Process::HotkeyText(uint32_t modifiers, uint32_t key) {
  return HotkeyDisplayText(modifiers, key, KeyName);
}

void Win32Process::RegisterWindowClass() { RegisterMainWindowClass(TheWindow(), instance_); }

std::optional<Rect> Win32Process::WorkArea() {
  RECT area = {};
  if (!SystemParametersInfoW(SPI_GETWORKAREA, 0, &area, 0)) return std::nullopt;
  return FromRECT(area);
}

Rect Win32Process::PrimaryScreen() {
  return {0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)};
}

bool Win32Process::CreateMainWindow(Point place, int width, int height, const std::u16string& title) {
  const RECT rect = {place.x, place.y, place.x + width, place.y + height};
  return OpenMainWindow(instance_, rect, Wide(title)) != nullptr;
}

void Win32Process::ShowCreatedWindow(bool hidden) {
  ShowWindow(TheWindow().Handle(), hidden ? SW_HIDE : showCommand_);
}

void Win32Process::RunMessageLoop() {
  MSG message;
  while (GetMessageW(&message, nullptr, 0, 0) != 0) {
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
}

}  // namespace quilmark
