#include "shell/app/app_commands.h"

#include <string_view>

#include "config/translate.h"
#include "shell/app/content_picker.h"
#include "shell/app/filter_file.h"
#include "shell/app/manual_refresh.h"
#include "shell/app/routing.h"
#include "shell/view/commands.h"

namespace quilmark {

namespace {

struct Text {
  std::u16string_view key, english;
};

Effects Tell(const ViewContext& context, const Text& text) {
  context.window.SetStatus(TranslateOr(text.key, text.english));
  return {};
}

bool IsThere(const AppState& app, AppMode mode) {
  return app.views[static_cast<size_t>(mode)] != nullptr;
}

// Enters a mode of the window, or says that this version has none.
Effects Enter(AppState& app, const ViewContext& context, AppMode mode, const Text& entered,
              const Text& missing) {
  if (!IsThere(app, mode)) return Tell(context, missing);
  Effects effects = SwitchMode(app, context, mode);
  (void)Tell(context, entered);
  return effects;
}

Effects EnterSearch(AppState& app, const ViewContext& context) {
  Effects effects = SwitchMode(app, context, AppMode::kSearch);
  effects.focus = Focus::kSearchBox;
  (void)Tell(context,
             {u"Status_SwitchedToSearch", u"Switched to Search (use context menu for Analysis)."});
  return effects;
}

Effects ToggleAnalysis(AppState& app, const ViewContext& context) {
  if (app.appMode == AppMode::kAnalysis) return EnterSearch(app, context);
  return Enter(app, context, AppMode::kAnalysis,
               {u"Status_SwitchedToAnalysis", u"Switched to Analysis (use Back to Search to return)."},
               {u"Status_AnalysisMissing", u"Disk analysis is not part of this version."});
}

Effects EnterDuplicates(AppState& app, const ViewContext& context) {
  return Enter(app, context, AppMode::kDuplicates,
               {u"Status_SwitchedToDup", u"Switched to Duplicate Files (right-click to switch modes)."},
               {u"Status_DupMissing", u"The duplicate finder is not part of this version."});
}

}  // namespace

Effects RunAppCommand(AppState& app, const ViewContext& context, uint16_t id) {
  switch (id) {
    case kCommandAnalysis:
      return ToggleAnalysis(app, context);
    case kCommandDuplicates:
      return EnterDuplicates(app, context);
    case kCommandSearch:
      return EnterSearch(app, context);
    case kCommandSettings:
      return Tell(context,
                  {u"Status_SettingsMissing", u"The Settings Center is not part of this version."});
    case kCommandFileTypes:
      OpenContentExtPicker(app, context.window);
      return {};
    case kCommandShowFilters:
      ShowFilterFile(app);
      return {};
    case kCommandResetFilters:
      ResetFilterTags(app, context);
      return {};
    case kCommandRefreshNonNtfs:
      RefreshNonNtfs(app, context);
      return {};
    default:
      return {.isTaken = false};
  }
}

}  // namespace quilmark
