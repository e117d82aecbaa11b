#include "shell/win32/system/system_services.h"

#include <utility>

#include "platform/win32/wide.h"
#include "shell/app/hotkey_text.h"
#include "shell/view/window_ids.h"
#include "shell/win32/system/hotkey_names.h"
#include "shell/win32/system/run_tool.h"
#include "shell/win32/system/run_value.h"

namespace quilmark {

static int NumberOf(HotkeyKind which) {
  return which == HotkeyKind::kShow ? kHotkeyShow : kHotkeyForeground;
}

void SystemServices::Open(HWND window, std::function<void()> updateTrayTip) {
  window_ = window;
  updateTrayTip_ = std::move(updateTrayTip);
}

bool SystemServices::RegisterHotkey(HotkeyKind which, Hotkey hotkey) {
  return RegisterHotKey(window_, NumberOf(which), ModifiersToRegister(hotkey.modifiers), hotkey.key) !=
         FALSE;
}

void SystemServices::UnregisterHotkey(HotkeyKind which) { UnregisterHotKey(window_, NumberOf(which)); }

std::u16string SystemServices::HotkeyText(Hotkey hotkey) {
  return HotkeyDisplayText(hotkey.modifiers, hotkey.key, KeyName);
}

std::u16string SystemServices::Title() {
  std::u16string title(static_cast<size_t>(GetWindowTextLengthW(window_)) + 1, u'\0');
  const int length = GetWindowTextW(window_, Wide(title.data()), static_cast<int>(title.size()));
  title.resize(static_cast<size_t>(length));
  return title;
}

void SystemServices::FlashTitle() {
  FLASHWINFO flash = {};
  flash.cbSize = sizeof flash;
  flash.hwnd = window_;
  flash.dwFlags = FLASHW_ALL | FLASHW_TIMERNOFG;
  flash.uCount = 4;
  static_assert((FLASHW_ALL | FLASHW_TIMERNOFG) == 15);
  FlashWindowEx(&flash);
}

void SystemServices::ShowBalloon(const std::u16string& title, const std::u16string& text) {
  tray_.ShowBalloon(title, text);
}

void SystemServices::TellInformation(const std::u16string& title, const std::u16string& text) {
  MessageBoxW(window_, Wide(text), Wide(title), MB_OK | MB_ICONINFORMATION);
}

ToolRun SystemServices::RunScheduler(const std::vector<std::u16string>& arguments, uint32_t mostMs) {
  return RunTool(SystemToolPath(u"schtasks.exe"), arguments, mostMs);
}

bool SystemServices::HasRunValue() { return HasRunKeyValue(); }

uint32_t SystemServices::DeleteRunValue() { return DeleteRunKeyValue(); }

std::u16string SystemServices::ProgramPath() {
  constexpr size_t kLongestPath = 32'768;
  std::u16string path(kLongestPath, u'\0');
  path.resize(GetModuleFileNameW(nullptr, Wide(path.data()), static_cast<DWORD>(path.size())));
  return path;
}

void SystemServices::OpenAddress(const std::u16string& address) {
  ShellExecuteW(window_, L"open", Wide(address), nullptr, nullptr, SW_SHOWNORMAL);
}

uint32_t HeldModifiers() {
  const auto bit = [](int key, uint32_t value) { return GetKeyState(key) < 0 ? value : 0u; };
  return bit(VK_MENU, MOD_ALT) | bit(VK_CONTROL, MOD_CONTROL) | bit(VK_SHIFT, MOD_SHIFT);
}

}  // namespace quilmark
