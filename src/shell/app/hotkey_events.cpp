#include "shell/app/hotkey_events.h"

#include "shell/app/system_port.h"
#include "shell/settings/hotkey_registration.h"

namespace quilmark {

static CaptureParts PartsOf(AppState& app, WindowPort& window) {
  return {app.capture, app.hotkeys, window, *app.system};
}

void RegisterHotkeysAtStart(AppState& app) {
  (void)RegisterShowHotkey(app.hotkeys, *app.system, HotkeyOf(app.hotkeys, HotkeyKind::kShow),
                           SaveHotkey::kNo);
  RegisterForegroundHotkey(app.hotkeys, *app.system);
}

void CaptureHotkey(AppState& app, WindowPort& window, HotkeyKind which) {
  app.shownByUser = true;
  BeginHotkeyCapture(PartsOf(app, window), which, CaptureWindow::kMain);
}

bool OnCaptureKey(AppState& app, WindowPort& window, const CaptureKey& key) {
  return app.capture.isActive && TakeCaptureKey(PartsOf(app, window), key);
}

void OnCaptureHint(AppState& app, WindowPort& window) {
  if (app.capture.isActive) ShowCaptureHint(PartsOf(app, window));
}

}  // namespace quilmark
