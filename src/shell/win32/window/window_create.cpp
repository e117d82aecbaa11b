#include <windows.h>

#include <commctrl.h>

#include "config/log.h"
#include "config/translate.h"
#include "shell/app/hotkey_events.h"
#include "shell/app/routing.h"
#include "shell/app/wiring.h"
#include "shell/view/window_ids.h"
#include "shell/win32/system/shell_icons.h"
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

void MakeHidden(HWND parent, const wchar_t* className, int id, DWORD style) {
  CreateWindowExW(0, className, L"", WS_CHILD | style, 0, 0, 0, 0, parent,
                  reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), GetModuleHandleW(nullptr), nullptr);
}

}  // namespace

void MainWindow::MakeControls() {
  for (size_t mode = 0; mode < kAppModes; ++mode) {
    const std::vector<ControlSpec> specs = TakeControls(App(), static_cast<AppMode>(mode));
    controls.Make(window_, specs, *this);
    for (const ControlSpec& spec : specs) {
      if (spec.kind != ControlKind::kDay) continue;
      // A field without a day of its own shows today.
      const int day = controls.DayOf(spec.id);
      if (day != spec.day) OnControl({.kind = ControlEvent::kDay, .id = spec.id, .value = day});
    }
  }
  // These are never seen: they hold what other programs ask for.
  MakeHidden(window_, L"STATIC", kStatusText, 0);
  MakeHidden(window_, L"SCROLLBAR", kVerticalBar, SBS_VERT);
  MakeHidden(window_, L"SCROLLBAR", kHorizontalBar, SBS_HORZ);
  MakeHidden(window_, L"SCROLLBAR", kSidebarBar, SBS_VERT);
  tip.Open(window_);
}

void CreateWindowParts(AppState& app, MainWindow& window, HWND handle) {
  LogGdiState(u"WM_CREATE begin");
  InitControlClasses();
  window.OpenBackBuffer(handle);
  window.OpenServices();
  window.foreign = OpenToOthers(handle);
  window.TakeScale();
  ApplyTheme(window);
  window.shell.Open(handle);
  WireProgram(app, window, window.shell, TheShellIcons());
  window.MakeControls();
  app.trayIconAdded = false;
  window.AddOrUpdateTrayIcon();
  RegisterHotkeysAtStart(app);
  if (app.hiddenStart) window.StartTimer(kTimerHiddenStart, kHiddenGuardMs);
  LogGdiState(u"WM_CREATE end");
  window.SetTitle(TranslateOr(u"Status_InitializingIndex", u"Initializing..."));
  StartEngine(app);
}

}  // namespace quilmark
