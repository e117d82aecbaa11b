#include "shell/app/tray_menu.h"

#include <array>
#include <string>
#include <utility>

#include "config/product.h"
#include "config/translate.h"
#include "config/window_settings.h"
#include "shell/app/app_commands.h"
#include "shell/app/hotkey_events.h"
#include "shell/app/routing.h"
#include "shell/app/system_port.h"
#include "shell/app/theme.h"
#include "shell/app/window_events.h"
#include "shell/view/commands.h"
#include "shell/view/window_ids.h"

namespace quilmark {

namespace {

constexpr std::array<int, 6> kContentLimitsMB = {10, 20, 50, 100, 500, 0};  // 0: no limit

// Commands of the tray that are those of the search view.
struct SearchCommand {
  int choice;
  uint16_t command;
};
constexpr SearchCommand kSearchCommands[] = {
    {kTrayClearRecent, kCommandClearRecent}, {kTraySidebar, kCommandSidebar},
    {kTrayTopBar, kCommandTopBar},           {kTrayInitials, kCommandInitials},
    {kTrayGridLines, kCommandGridLines},
};

MenuRow Row(int id, std::u16string_view key, std::u16string_view english) {
  return {.id = static_cast<uint16_t>(id), .text = TranslateOr(key, english)};
}

void Say(const ViewContext& context, std::u16string_view key, std::u16string_view english) {
  context.window.SetStatus(TranslateOr(key, english));
}

void Save(const ViewContext& context) { SaveWindowSettings(context.window.Placement()); }

void Exit(AppState& app, WindowPort& window) {
  app.exitRequested = true;
  window.PostClose();
}

void ToggleGlobalTrim(const ViewContext& context) {
  CurrentWindowSettings.globalTrimOnToggle = !CurrentWindowSettings.globalTrimOnToggle;
  Save(context);
}

void SetContentLimit(const ViewContext& context, size_t place) {
  CurrentWindowSettings.contentMaxFileSizeMB = kContentLimitsMB[place];
  Save(context);
}

Effects RunSearchCommand(AppState& app, const ViewContext& context, uint16_t command) {
  View& search = *app.views[static_cast<size_t>(AppMode::kSearch)];
  return OfView(app, AppMode::kSearch, search.OnCommand(command, context));
}

// Those that have a range of numbers.
void RunNumbered(const ViewContext& context, int choice) {
  const int limit = choice - kTrayFirstContentLimit;
  if (limit >= 0 && limit < static_cast<int>(kContentLimitsMB.size())) {
    SetContentLimit(context, static_cast<size_t>(limit));
  } else if (choice >= kTrayFirstLanguage && choice < kTrayFirstContentLimit) {
    Say(context, u"Status_LanguagesMissing", u"Other languages are not part of this version.");
  }
}

void RunOwnCommand(AppState& app, const ViewContext& context, int choice) {
  WindowPort& window = context.window;
  switch (choice) {
    case kTrayShow:
      return ShowAsAsked(app, window);
    case kTrayExit:
      return Exit(app, window);
    case kTrayAutostart:
      return ToggleAutostart(*app.system, window);
    case kTrayHomePage:
      return app.system->OpenAddress(std::u16string(kHomePage));
    case kTrayCaptureShow:
      return CaptureHotkey(app, window, HotkeyKind::kShow);
    case kTrayCaptureForeground:
      return CaptureHotkey(app, window, HotkeyKind::kForeground);
    case kTrayLanguageFile:
      return Say(context, u"Status_LanguageFileMissing",
                 u"Language files are not part of this version.");
    case kTrayGlobalTrim:
      return ToggleGlobalTrim(context);
    case kTrayTheme:
      return SwitchTheme(*app.theme, window);
    default:
      return RunNumbered(context, choice);
  }
}

Effects Run(AppState& app, const ViewContext& context, int choice) {
  for (const SearchCommand& row : kSearchCommands) {
    if (row.choice == choice) return RunSearchCommand(app, context, row.command);
  }
  if (choice == kTraySettings) return RunAppCommand(app, context, kCommandSettings);
  RunOwnCommand(app, context, choice);
  return {};
}

}  // namespace

std::vector<MenuRow> TrayMenuRows(bool isAutostartEnabled) {
  MenuRow autostart = Row(kTrayAutostart, u"Menu_AutoStart", u"Run on Startup");
  autostart.isChecked = isAutostartEnabled;
  return {Row(kTrayShow, u"Menu_ShowMainWindow", u"Show Window"),
          Row(kTraySettings, u"Settings_Title", u"Settings Center"),
          std::move(autostart),
          Row(kTrayHomePage, u"Menu_Homepage", u"Homepage"),
          {},
          Row(kTrayExit, u"Menu_Exit", u"Exit")};
}

Effects OnTrayChoice(AppState& app, const ViewContext& context, uint16_t choice) {
  if (choice == 0) return {};
  Effects effects = Run(app, context, choice);
  context.window.TrimSelf();
  return effects;
}

}  // namespace quilmark
