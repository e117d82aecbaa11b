#include "shell/win32/system/app_icons.h"

#include <utility>

#include "canvas/scale.h"
#include "shell/view/window_ids.h"
#include "shell/win32/system/system_calls.h"

namespace quilmark {

namespace {

constexpr int kSmall = 16, kLarge = 32;  // pixels at 96 dpi

// If the icon cannot be loaded, the window keeps the former one, or that of its class.
void Wear(HWND window, WPARAM kind, int size, UniqueIcon& kept) {
  UniqueIcon icon = LoadAppIcon(size);
  if (!icon) return;
  SendMessageW(window, WM_SETICON, kind, reinterpret_cast<LPARAM>(icon.Get()));
  kept = std::move(icon);
}

}  // namespace

UniqueIcon LoadAppIcon(int size) {
  return UniqueIcon(static_cast<HICON>(LoadImageW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(kAppIcon),
                                                  IMAGE_ICON, size, size, LR_DEFAULTCOLOR)));
}

void WearIcons(HWND window, uint32_t dpi, WindowIcons& icons) {
  Wear(window, ICON_BIG, ScaleFor(dpi, kLarge), icons.large);
  Wear(window, ICON_SMALL, ScaleFor(dpi, kSmall), icons.small);
}

int TrayIconSize() {
  const HWND taskbar = FindWindowW(L"Shell_TrayWnd", nullptr);
  return ScaleFor(taskbar != nullptr ? DpiOfWindow(taskbar) : DpiOfSystem(), kSmall);
}

}  // namespace quilmark
