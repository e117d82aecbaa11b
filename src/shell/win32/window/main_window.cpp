#include "shell/win32/window/main_window.h"

#include <algorithm>
#include <utility>

#include "config/palette.h"
#include "config/translate.h"
#include "platform/background.h"
#include "platform/clock.h"
#include "platform/mul_div.h"
#include "platform/win32/wide.h"
#include "shell/app/hotkey_events.h"
#include "shell/app/hotkey_text.h"
#include "shell/app/routing.h"
#include "shell/view/window_ids.h"
#include "shell/win32/controls/window_text.h"
#include "shell/win32/system/high_contrast.h"
#include "shell/win32/system/hotkey_names.h"
#include "shell/win32/system/system_calls.h"
#include "shell/win32/system/trim_memory.h"

namespace quilmark {

namespace {

constexpr uint32_t kTrayRetryMs = 1'500;

// Takes the characters out of the queue that the message loop has made of a key that went down.
void DropCharacters() {
  MSG message = {};
  while (PeekMessageW(&message, nullptr, WM_CHAR, WM_DEADCHAR, PM_REMOVE)) {
  }
  while (PeekMessageW(&message, nullptr, WM_SYSCHAR, WM_SYSDEADCHAR, PM_REMOVE)) {
  }
}

void RepaintAll(HWND window) {
  RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN | RDW_UPDATENOW);
}

}  // namespace

MainWindow& TheWindow() {
  static MainWindow window;
  return window;
}

void MainWindow::StartTimer(uint32_t id, uint32_t delayMs) { SetTimer(window_, id, delayMs, nullptr); }

void MainWindow::StopTimer(uint32_t id) { KillTimer(window_, id); }

void MainWindow::SetTitle(const std::u16string& title) { SetWindowTextW(window_, Wide(title)); }

void MainWindow::SetStatus(const std::u16string& text) {
  status = text;
  SetDlgItemTextW(window_, kStatusText, Wide(text));
  Invalidate(ShownView(App()).StatusPlace(Context()));
}

void MainWindow::PlaceCaret(int id, size_t units) {
  SendMessageW(controls.HandleOf(id), EM_SETSEL, units, static_cast<LPARAM>(units));
  SendMessageW(controls.HandleOf(id), EM_SCROLLCARET, 0, 0);
}

std::u16string MainWindow::TextOf(int id) { return TextOfWindow(controls.HandleOf(id)); }

void MainWindow::SetItems(int id, const std::vector<std::u16string>& items, int chosen) {
  controls.SetItems(id, items, chosen);
}

void MainWindow::Invalidate(const Rect& place) {
  if (IsEmpty(place)) return;
  const RECT rect = ToRECT(place);
  InvalidateRect(window_, &rect, FALSE);
}

void MainWindow::TellError(const std::u16string& text) {
  MessageBoxW(window_, Wide(text), Wide(TranslateOr(u"MsgTitle_Error", u"Error")), MB_OK | MB_ICONERROR);
}

bool MainWindow::IsVisible() { return IsWindowVisible(window_) != FALSE; }

void MainWindow::Hide() {
  picker.CloseQuietly();  // the system hides no window with its owner
  ShowWindow(window_, SW_HIDE);
}

void MainWindow::ShowAndRaise() {
  ShowWindow(window_, IsIconic(window_) ? SW_RESTORE : SW_SHOW);
  RECT rect = {};
  GetWindowRect(window_, &rect);
  if (MonitorFromRect(&rect, MONITOR_DEFAULTTONULL) == nullptr) {
    MONITORINFO monitor = {};
    monitor.cbSize = sizeof monitor;
    GetMonitorInfoW(MonitorFromRect(&rect, MONITOR_DEFAULTTONEAREST), &monitor);
    const Point place =
        PlaceWithin(FromRECT(monitor.rcWork), rect.right - rect.left, rect.bottom - rect.top);
    SetWindowPos(window_, nullptr, place.x, place.y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
  }
  SetWindowPos(window_, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_SHOWWINDOW);
  SetForegroundWindow(window_);
  BringWindowToTop(window_);
  if (!controls.IsEnabled(kQueryBox)) return;
  controls.Focus(kQueryBox);
  SendMessageW(controls.HandleOf(kQueryBox), EM_SETSEL, static_cast<WPARAM>(-1), -1);
}

void MainWindow::Destroy() { DestroyWindow(window_); }

void MainWindow::PostClose() { PostMessageW(window_, WM_CLOSE, 0, 0); }

TrayIconState MainWindow::AddOrUpdateTrayIcon() {
  const HotkeyConfig& hotkeys = App().hotkeys;
  const std::u16string trayTip =
      TrayTipText(TranslateOr(u"TrayTip", u"Quilmark - {0} Show/Hide"),
                  HotkeyDisplayText(hotkeys.showModifiers, hotkeys.showKey, KeyName));
  if (const int size = TrayIconSize(); size != std::exchange(traySize, size)) {
    tray.TakePicture(LoadAppIcon(size));
  }
  tray.Prepare(window_);
  const TrayIconState state = tray.AddOrUpdate(App().trayIconAdded, trayTip);
  App().trayIconAdded = state != TrayIconState::kAbsent;
  if (App().trayIconAdded) {
    StopTimer(ID_TIMER_TRAY_RETRY);
  } else {
    StartTimer(ID_TIMER_TRAY_RETRY, kTrayRetryMs);
  }
  return state;
}

bool MainWindow::SystemShutsDown() { return GetSystemMetrics(SM_SHUTTINGDOWN) != 0; }

void MainWindow::TrimSelf() { RequestSelfTrim(window_); }

void MainWindow::TrimSelfInJob() {
  RunBackground("hotkey_hide_trim_self", [window = window_] { RequestSelfTrim(window); });
}

void MainWindow::TrimOthersInJob() { RequestGlobalTrimAsync(); }

std::optional<WindowPlacement> MainWindow::Placement() {
  WINDOWPLACEMENT placement = {};
  placement.length = sizeof placement;
  if (!IsWindow(window_) || !GetWindowPlacement(window_, &placement)) return std::nullopt;
  const RECT& rect = placement.rcNormalPosition;
  return WindowPlacement{.restored = {rect.right - rect.left, rect.bottom - rect.top},
                         .dpi = static_cast<int>(App().systemDpi)};
}

void MainWindow::RemoveTrayIcon() { tray.Remove(); }

void MainWindow::UnregisterHotkeys() {
  services.UnregisterHotkey(HotkeyKind::kShow);
  services.UnregisterHotkey(HotkeyKind::kForeground);
}

void MainWindow::ReleaseBrushes() {
  well.Reset();
  scrollTrack.Reset();
  // The class is done with it too: nothing erases a window that is being destroyed.
  SetClassLongPtrW(window_, GCLP_HBRBACKGROUND, 0);
  classBrush.Reset();
}

void MainWindow::ReleaseBackBuffer() { backBuffer.Close(); }

void MainWindow::ReleaseFonts() { CurrentFonts().Release(); }

void MainWindow::QuitMessageLoop() { PostQuitMessage(0); }

void MainWindow::OpenBackBuffer(HWND window) {
  window_ = window;
  App().mainWindow = window;
  backBuffer.Open(window);
}

void MainWindow::TakeScale() {
  // The settings were read at the system's scale, which need not be that of this screen.
  const auto former = static_cast<int>(App().systemDpi), dpi = static_cast<int>(DpiOfWindow(window_));
  if (TakeScaleChange(App(), static_cast<uint32_t>(dpi))) {
    RECT rect = {};
    GetWindowRect(window_, &rect);
    SetWindowPos(window_, nullptr, 0, 0, MulDiv(rect.right - rect.left, dpi, former),
                 MulDiv(rect.bottom - rect.top, dpi, former),
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
  }
  RemakeIcons();
}

void MainWindow::OpenServices() {
  services.Open(window_, [this] {
    if (App().trayIconAdded) AddOrUpdateTrayIcon();
  });
  App().system = &services;
  App().theme = this;
  App().pickerWindow = this;
}

bool MainWindow::TakeKey(uint32_t key, bool isRepeat) {
  if (!App().capture.isActive) return false;
  DropCharacters();  // a message box about the key would hand them out
  return OnCaptureKey(App(), *this, {.key = key, .modifiers = HeldModifiers(), .isRepeat = isRepeat});
}

ViewContext MainWindow::Context() const {
  return {.dpi = App().systemDpi,
          .client = {0, 0, App().clientWidth, App().clientHeight},
          .palette = CurrentPalette,
          .fonts = CurrentFonts(),
          .window = TheWindow(),
          .status = status,
          .hasFocus = GetFocus() == window_,
          .isTipShown = tip.IsShown(),
          .dragStep = {GetSystemMetrics(SM_CXDRAG), GetSystemMetrics(SM_CYDRAG)},
          .nowMs = TickMs()};
}

std::optional<SystemColors> MainWindow::HighContrast() { return readHighContrast(); }

void MainWindow::WearTheme(bool isDark) {
  constexpr COLORREF kOfTheSystem = 0xFFFFFFFF;
  isDark_ = isDark;
  well.Reset(CreateSolidBrush(CurrentPalette.editWell));
  scrollTrack.Reset();
  RemakeFonts();
  Relayout();  // a combo box takes its height from its font
  const COLORREF caption = isDark ? CurrentPalette.surface : CurrentPalette.toolbar;
  ColorFrame(window_,
             CurrentPalette.isSystem
                 ? FrameColors{.dark = false, .caption = kOfTheSystem, .text = kOfTheSystem}
                 : FrameColors{.dark = isDark, .caption = caption, .text = CurrentPalette.text});
  RepaintAll(window_);
  picker.WearTheme();
}

void MainWindow::WearColors() {
  well.Reset(CreateSolidBrush(CurrentPalette.editWell));
  scrollTrack.Reset();
  RepaintAll(window_);
  picker.WearTheme();
}

void MainWindow::RemakeFonts() {
  CarryOut(CloseEditor(App(), Context()));  // the editor and the tip hold a former font
  // The controls hold the former ones until they have the new.
  const FontSet former = CurrentFonts().Take(MakeFonts(App().systemDpi, App().uiIsChinese));
  controls.TakeFonts();
}

void MainWindow::RemakeIcons() { WearIcons(window_, App().systemDpi, icons); }

void MainWindow::RecreateBackBuffer() {
  backBuffer.Resize(window_, App().clientWidth, App().clientHeight);
}

}  // namespace quilmark
