#include "shell/app/process_start.h"

#include "config/hotkeys.h"
#include "config/language_setting.h"
#include "config/palette.h"
#include "config/product.h"
#include "config/translate.h"
#include "config/ui_colors.h"
#include "config/window_settings.h"
#include "content/settings/content_config.h"
#include "index/engine/search_engine.h"
#include "index/life/volume_life.h"
#include "search/filter/filter_categories.h"
#include "search/results/search_session.h"
#include "shell/actions/recent_opens.h"
#include "shell/app/command_line.h"

namespace quilmark {

namespace {

constexpr uint32_t kStartPauseMs = 1'000, kEndPauseMs = 500;
constexpr uint32_t kShellStepMs = 500, kWindowStepMs = 100, kWindowWaitMs = 5'000;
constexpr int kShellRounds = 6;
constexpr uint16_t kPrimaryLanguage = 1023, kChinese = 4;
constexpr int kStartWidth = 1100, kStartHeight = 700;

// Per monitor version 2, per monitor, system, unaware but scaled by GDI.
constexpr int kScaleContexts[] = {-4, -3, -2, -5};

constexpr std::u16string_view kPrivileges[] = {u"SeBackupPrivilege", u"SeRestorePrivilege",
                                               u"SeManageVolumePrivilege"};

constexpr uint32_t kDesignDpi = 96;  // of what the views begin with

void TakeScale(AppState& app, ProcessPort& system) {
  if (system.HasScaleAwareness()) {
    for (const int context : kScaleContexts) {
      if (system.SetScaleAwareness(context)) break;
    }
  }
  app.systemDpi = system.SystemDpi();
  for (View* const view : app.views) {
    if (view != nullptr) view->Rescale(kDesignDpi, app.systemDpi == 0 ? kDesignDpi : app.systemDpi);
  }
}

bool ReadHiddenStart(ProcessPort& system) {
  const auto arguments = system.Arguments();
  return arguments ? WantsHiddenStart(*arguments) : WantsHiddenStart(system.CommandLineText());
}

bool WaitForRunningWindow(ProcessPort& system) {
  for (uint32_t waited = 0;; waited += kWindowStepMs) {
    if (system.FindRunningWindow()) return true;
    if (waited == kWindowWaitMs) return false;
    system.Pause(kWindowStepMs);
  }
}

// Has the running copy show its window, unless this start was a hidden one. Returns the exit code.
int EndAsSecondCopy(const AppState& app, ProcessPort& system) {
  if (app.hiddenStart) return 0;
  if (WaitForRunningWindow(system)) {
    // This comes first: raising gives away the foreground that this copy has to hand on.
    system.LetRunningTakeForeground();
    system.RaiseRunningWindow();
    system.AskRunningToShow();
    return 0;
  }
  const std::u16string hotkey = system.HotkeyText(app.hotkeys.showModifiers, app.hotkeys.showKey);
  system.ShowBox(
      BoxIcon::kInformation, TranslateOr(u"MsgTitle_Information", u"Information"),
      TranslateOr(u"Msg_AlreadyRunningPrefix", u"Quilmark is already running.\n\nUse the hotkey \"") +
          hotkey + TranslateOr(u"Msg_AlreadyRunningSuffix", u"\" to show or hide the main window."));
  return 0;
}

void WaitForShell(ProcessPort& system) {
  for (int round = 0; round < kShellRounds && !system.ShellIsUp(); ++round) system.Pause(kShellStepMs);
}

void LoadSettings(AppState& app) {
  const WindowSize size =
      LoadWindowSettings({kStartWidth, kStartHeight}, static_cast<int>(app.systemDpi));
  app.windowWidth = size.width;
  app.windowHeight = size.height;
  TheSearch().options.initials = CurrentWindowSettings.initialSearchEnabled;
  LoadUiColors();
  ApplyThemeDefaults(CurrentWindowSettings.darkTheme);
  ApplyColorOverrides();
}

bool OpenMainWindow(AppState& app, ProcessPort& system) {
  system.RegisterWindowClass();
  const Rect area = system.WorkArea().value_or(system.PrimaryScreen());
  return system.CreateMainWindow(CentredIn(area, app.windowWidth, app.windowHeight), app.windowWidth,
                                 app.windowHeight,
                                 TranslateOr(u"Status_InitializingSimple", u"Initializing..."));
}

int RunAsOnlyCopy(AppState& app, ProcessPort& system) {
  for (const auto privilege : kPrivileges) system.EnablePrivilege(privilege);
  if (app.hiddenStart) WaitForShell(system);
  if (!app.hiddenStart && !system.IsAdministrator()) {
    system.ShowBox(BoxIcon::kError, TranslateOr(u"App_Name", kProductName),
                   TranslateOr(u"Msg_AdminRequired", u"Run as administrator required."));
    return 1;
  }
  LoadFilterCategories(app.language, app.uiIsChinese);
  LoadContentConfig();
  LoadSettings(app);
  if (!OpenMainWindow(app, system)) return 1;
  LoadRecentOpensAsync();
  system.ShowCreatedWindow(app.hiddenStart);
  system.RunMessageLoop();
  // There are none left unless the loop ended in another way than with the window.
  DropAllVolumes(Engine());
  system.Pause(kEndPauseMs);
  system.CloseMutex();
  return 0;
}

}  // namespace

int RunProcess(AppState& app, ProcessPort& system) {
  TakeScale(app, system);
  // The pause comes before everything that can be seen, also in a second copy.
  system.Pause(kStartPauseMs);
  app.uiIsChinese = (system.UiLanguage() & kPrimaryLanguage) == kChinese;
  app.hotkeys = LoadHotkeys();
  app.language = LoadLanguageSetting();
  if (app.language.empty()) app.language = app.uiIsChinese ? u"zh-cn" : u"en-us";
  app.hiddenStart = ReadHiddenStart(system);
  if (!system.TakeMutex(kInstanceMutex)) return EndAsSecondCopy(app, system);
  return RunAsOnlyCopy(app, system);
}

}  // namespace quilmark
