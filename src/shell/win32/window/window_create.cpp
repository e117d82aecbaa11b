#include <windows.h>

#include <commctrl.h>

#include "config/log.h"
#include "config/translate.h"
#include "index/volume_life.h"
#include "search/search_state.h"
#include "shell/view/window_ids.h"
#include "shell/win32/controls/combo.h"
#include "shell/win32/controls/search_box.h"
#include "shell/win32/system/theme.h"
#include "shell/win32/window/main_window.h"

namespace quilmark {

namespace {

constexpr uint32_t kHiddenGuardMs = 3'500;

void InitControlClasses() {
  INITCOMMONCONTROLSEX classes = {};
  classes.dwSize = sizeof classes;
  classes.dwICC = ICC_DATE_CLASSES;
  InitCommonControlsEx(&classes);
}

// The search reaches the window by these.
void InstallSearchHooks(MainWindow& window) {
  searchHooks.window = window.Handle();
  searchHooks.readSearchBox = [&window] { return window.SearchBoxText(); };
  searchHooks.showStatus = [&window](std::u16string_view key, std::u16string_view english) {
    window.SetStatus(TranslateOr(key, english));
  };
  searchHooks.restartTimer = [&window](uint32_t id, uint32_t delayMs) {
    window.StopTimer(id);
    window.StartTimer(id, delayMs);
  };
}

}  // namespace

void MainWindow::MakeControls() {
  scopeBox = MakeCombo(window_, kScopeBox, CurrentFonts().Of(FontRole::kMain));
  RebuildScopeBox();
  searchBox = MakeSearchBox(window_, CurrentFonts().Of(FontRole::kMain));
  filterBar.Open(window_, CurrentFonts().Of(FontRole::kMain), CurrentFonts().Of(FontRole::kFilter));
  const auto hiddenBar = [this](int id, DWORD style) {
    return CreateWindowExW(0, L"SCROLLBAR", L"", WS_CHILD | style, 0, 0, 0, 0, window_,
                           reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), GetModuleHandleW(nullptr),
                           nullptr);
  };
  statusText = CreateWindowExW(0, L"STATIC", L"", WS_CHILD, 0, 0, 0, 0, window_,
                               reinterpret_cast<HMENU>(kStatusText), GetModuleHandleW(nullptr), nullptr);
  verticalBar = hiddenBar(kVerticalBar, SBS_VERT);
  horizontalBar = hiddenBar(kHorizontalBar, SBS_HORZ);
  sidebarBar = hiddenBar(kSidebarBar, SBS_VERT);
  tip.Open(window_);
}

void CreateWindowParts(AppState& app, MainWindow& window, HWND handle) {
  LogGdiState(u"WM_CREATE begin");
  InitControlClasses();
  window.OpenBackBuffer(handle);
  window.foreign = OpenToOthers(handle);
  window.TakeScale();
  ApplyTheme(window);
  window.MakeControls();
  InstallSearchHooks(window);
  InstallFeatures(app, window);
  app.trayIconAdded = false;
  window.AddOrUpdateTrayIcon();
  window.RegisterHotkeys();
  if (app.hiddenStart) window.StartTimer(kTimerHiddenStart, kHiddenGuardMs);
  LogGdiState(u"WM_CREATE end");
  window.SetTitle(TranslateOr(u"Status_InitializingIndex", u"Initializing..."));
  InitBackground(Engine(), handle);
  StartDriveWatcher(handle);
}

}  // namespace quilmark
