#include "shell/win32/system/system_calls.h"

#include "platform/win32/file_handle.h"
#include "platform/win32/system_function.h"
#include "shell/win32/gdi/gdi.h"

namespace quilmark {

namespace {

constexpr uint32_t kUsualDpi = 96;
constexpr DWORD kDarkMode = 20, kCaptionColor = 35, kTextColor = 36;  // DWMWINDOWATTRIBUTE

uint32_t DpiOfScreen() {
  const WindowDc screen(nullptr);
  if (screen.Get() == nullptr) return kUsualDpi;
  const int dpi = GetDeviceCaps(screen.Get(), LOGPIXELSX);
  return dpi > 0 ? static_cast<uint32_t>(dpi) : kUsualDpi;
}

void SetFrameAttribute(HWND window, DWORD attribute, const void* value, DWORD size) {
  using SetAttribute = HRESULT(WINAPI*)(HWND, DWORD, LPCVOID, DWORD);
  const auto set = SystemCall<SetAttribute>(L"dwmapi.dll", "DwmSetWindowAttribute");
  if (set != nullptr) set(window, attribute, value, size);
}

}  // namespace

void EnableProcessPrivilege(const wchar_t* name) {
  HANDLE opened = nullptr;
  if (!OpenProcessToken(GetCurrentProcess(), TOKEN_ADJUST_PRIVILEGES | TOKEN_QUERY, &opened)) return;
  const UniqueKernelObject token(opened);
  TOKEN_PRIVILEGES privileges = {};
  privileges.PrivilegeCount = 1;
  privileges.Privileges[0].Attributes = SE_PRIVILEGE_ENABLED;
  if (LookupPrivilegeValueW(nullptr, name, &privileges.Privileges[0].Luid)) {
    AdjustTokenPrivileges(token.Get(), FALSE, &privileges, sizeof privileges, nullptr, nullptr);
  }
}

uint32_t DpiOfSystem() {
  const auto getDpi = SystemCall<UINT(WINAPI*)()>(L"user32.dll", "GetDpiForSystem");
  const UINT dpi = getDpi != nullptr ? getDpi() : 0;
  return dpi > 0 ? dpi : DpiOfScreen();
}

uint32_t DpiOfWindow(HWND window) {
  const auto getDpi = SystemCall<UINT(WINAPI*)(HWND)>(L"user32.dll", "GetDpiForWindow");
  const UINT dpi = getDpi != nullptr ? getDpi(window) : 0;
  return dpi > 0 ? dpi : DpiOfSystem();
}

void DarkenFrame(HWND window, bool dark) {
  const BOOL value = dark;
  SetFrameAttribute(window, kDarkMode, &value, sizeof value);
}

void ColorFrame(HWND window, const FrameColors& colors) {
  DarkenFrame(window, colors.dark);
  SetFrameAttribute(window, kCaptionColor, &colors.caption, sizeof colors.caption);
  SetFrameAttribute(window, kTextColor, &colors.text, sizeof colors.text);
  SetWindowPos(window, nullptr, 0, 0, 0, 0,
               SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED);
}

}  // namespace quilmark
