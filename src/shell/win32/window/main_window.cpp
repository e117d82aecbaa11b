#include "shell/win32/window/main_window.h"

#include <algorithm>
#include <utility>

#include "config/palette.h"
#include "config/translate.h"
#include "config/window_settings.h"
#include "platform/background.h"
#include "platform/clock.h"
#include "platform/mul_div.h"
#include "platform/win32/wide.h"
#include "search/filtered_results.h"
#include "search/filters.h"
#include "search/search_state.h"
#include "shell/app/hotkey_text.h"
#include "shell/app/scale_change.h"
#include "shell/search/scope_items.h"
#include "shell/search/search_mouse.h"
#include "shell/view/window_ids.h"
#include "shell/win32/controls/combo.h"
#include "shell/win32/controls/rename_editor.h"
#include "shell/win32/controls/search_box.h"
#include "shell/win32/controls/window_text.h"
#include "shell/win32/system/hotkey_names.h"
#include "shell/win32/system/system_calls.h"
#include "shell/win32/system/trim_memory.h"
#include "shell/win32/window/carry_out.h"

namespace quilmark {

namespace {

constexpr uint32_t kTrayRetryMs = 1'500;

void Show(HWND window, const RECT& rect) {
  MoveWindow(window, rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top, TRUE);
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
  App().statusText = text;
  if (!IsWindow(statusText)) return;
  SetWindowTextW(statusText, Wide(text));
  const RECT strip = {0, 0, App().clientWidth, App().headerTop};
  InvalidateRect(window_, &strip, FALSE);
}

std::u16string MainWindow::SearchBoxText() { return TextOfWindow(searchBox); }

void MainWindow::ClearSearchBox() {
  settingText = true;
  SetWindowTextW(searchBox, L"");
  settingText = false;
}

bool MainWindow::IsSearchBoxEnabled() { return IsWindowEnabled(searchBox) != FALSE; }

void MainWindow::EnableSearchBox() {
  EnableWindow(searchBox, TRUE);
  InvalidateRect(searchBox, nullptr, TRUE);
}

void MainWindow::FocusSearchBox() {
  if (IsWindowEnabled(searchBox)) SetFocus(searchBox);
}

void MainWindow::RebuildScopeBox() {
  const auto items = RenewScopeItems(App(), Engine());
  FillCombo(scopeBox, items, scopeIndex);
}

void MainWindow::RedrawTags() {
  filterBar.RedrawTags();
  const RECT sidebar = {0, App().headerTop, App().sidebarWidth, App().clientHeight};
  if (CurrentWindowSettings.sidebarLayout) InvalidateRect(window_, &sidebar, FALSE);
}

void MainWindow::InvalidateList() {
  const RECT list = {0, App().headerTop, App().clientWidth, App().clientHeight};
  InvalidateRect(window_, &list, FALSE);
}

void MainWindow::Invalidate(const Rect& place) {
  const RECT rect = ToRECT(place);
  InvalidateRect(window_, &rect, FALSE);
}

void MainWindow::CancelRename() { CancelRenameEditor(*this); }

void MainWindow::MoveRename() { MoveRenameEditor(App(), *this); }

void MainWindow::RelayoutList() {
  App().scrollY = ClampScroll(List(), App().scrollY, DisplayCount);
  FitColumns(App(), CurrentFonts());
  App().scrollY = ClampScroll(List(), App().scrollY, DisplayCount);  // a bar came or went with the fit
  App().scrollX = ClampHorizontal(List(), App().scrollX);
  SyncBars(App(), *this);
  CarryOut(App(), *this, RefreshHover(App(), *this, Context(), MouseOver(window_)));
  MoveRename();
  ++rangeUpdates;
}

bool MainWindow::IsVisible() { return IsWindowVisible(window_) != FALSE; }

void MainWindow::Hide() { ShowWindow(window_, SW_HIDE); }

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
  if (!IsWindowEnabled(searchBox)) return;
  SetFocus(searchBox);
  SendMessageW(searchBox, EM_SETSEL, static_cast<WPARAM>(-1), -1);
}

void MainWindow::Destroy() { DestroyWindow(window_); }

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
  UnregisterHotKey(window_, kHotkeyShow);
  UnregisterHotKey(window_, kHotkeyForeground);
}

void MainWindow::ReleaseBrushes() {
  brushes = {};
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
  if (TakeScaleChange(App(), CurrentWindowSettings, static_cast<uint32_t>(dpi))) {
    RECT rect = {};
    GetWindowRect(window_, &rect);
    SetWindowPos(window_, nullptr, 0, 0, MulDiv(rect.right - rect.left, dpi, former),
                 MulDiv(rect.bottom - rect.top, dpi, former),
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
  }
  App().sidebarWidth = ScaleFor(App().systemDpi, 200);
  App().headerTop = ScaleFor(App().systemDpi, 90);
  RemakeIcons();
}

void MainWindow::RegisterHotkeys() {
  const HotkeyConfig& keys = App().hotkeys;
  const bool isSame =
      keys.showModifiers == keys.foregroundModifiers && keys.showKey == keys.foregroundKey;
  if (!isSame) {
    RegisterHotKey(window_, kHotkeyShow, ModifiersToRegister(keys.showModifiers), keys.showKey);
  }
  RegisterHotKey(window_, kHotkeyForeground, ModifiersToRegister(keys.foregroundModifiers),
                 keys.foregroundKey);
}

bool MainWindow::Resize(int width, int height) {
  CancelRename();
  App().clientWidth = width;
  App().clientHeight = height;
  if (width == 0 || height == 0) return false;
  backBuffer.Resize(window_, width, height);
  PlaceControls();
  RelayoutList();
  return true;
}

void MainWindow::PlaceControls() {
  const TopRowLayout row = LayoutTopRow({.clientWidth = App().clientWidth,
                                         .dpi = App().systemDpi,
                                         .sizeCustom = CurrentWindowSettings.sizePreset == kCustomSize,
                                         .timeCustom = CurrentWindowSettings.timePreset == kCustomTime});
  PlaceCombo(scopeBox, {row.scope.left, row.scope.top, row.scope.right, row.search.bottom}, true);
  Show(searchBox, ToRECT(row.search));
  ApplySearchBoxRect(searchBox);
  filterBar.Place(row);
  App().headerTop = filterBar.PlaceTags();
}

void MainWindow::PlaceTags() {
  const int former = std::exchange(App().headerTop, filterBar.PlaceTags());
  RedrawTags();
  if (App().headerTop == former) return;
  RelayoutList();
  InvalidateRect(window_, nullptr, FALSE);
}

ViewContext MainWindow::Context() const {
  return {.dpi = App().systemDpi,
          .client = {0, 0, App().clientWidth, App().clientHeight},
          .palette = CurrentPalette,
          .fonts = CurrentFonts(),
          .hasFocus = GetFocus() == window_,
          .isTipShown = tip.IsShown(),
          .nowMs = TickMs()};
}

void MainWindow::RemakeFonts() {
  // The editor and the tip hold a former font.
  CancelRename();
  tip.Hide();
  // The controls hold the former ones until they have the new.
  GdiFonts& fonts = CurrentFonts();
  const FontSet former = fonts.Take(MakeFonts(App().systemDpi, App().uiIsChinese));
  const HFONT main = fonts.Of(FontRole::kMain);
  for (const HWND control : {searchBox, scopeBox}) {
    SendMessageW(control, WM_SETFONT, reinterpret_cast<WPARAM>(main), TRUE);
  }
  ApplySearchBoxRect(searchBox);  // a new font puts the text back to the top
  filterBar.SetFonts(main, fonts.Of(FontRole::kFilter));
}

void MainWindow::RemakeIcons() { WearIcons(window_, App().systemDpi, icons); }

void MainWindow::RecreateBackBuffer() {
  backBuffer.Resize(window_, App().clientWidth, App().clientHeight);
}

void SetViewMode(AppState& app, MainWindow& window, ViewMode view) {
  constexpr uint32_t kSettleMs = 220;
  CurrentWindowSettings.viewMode = static_cast<int>(view);
  app.scrollY = 0;
  app.lastScrollTick = TickMs();
  SaveWindowSettings(window.Placement());
  SendMessageW(window.Handle(), WM_SIZE, SIZE_RESTORED, MAKELPARAM(app.clientWidth, app.clientHeight));
  window.StartTimer(kTimerScrollSettle, kSettleMs);
  InvalidateRect(window.Handle(), nullptr, TRUE);
  UpdateWindow(window.Handle());
}

void SetFilterLayout(AppState& app, MainWindow& window, bool sidebar) {
  CurrentWindowSettings.sidebarLayout = sidebar;
  app.sidebarScroll = 0;
  app.list.hoverTag = -1;
  RunFeature(app.features.refreshFilterCounts);
  SendMessageW(window.Handle(), WM_SIZE, SIZE_RESTORED, MAKELPARAM(app.clientWidth, app.clientHeight));
  InvalidateRect(window.Handle(), nullptr, TRUE);
}

}  // namespace quilmark
