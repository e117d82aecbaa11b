#include "shell/app/manual_refresh.h"

#include "config/translate.h"
#include "index/engine/search_engine.h"
#include "index/life/volume_life.h"

namespace quilmark {

void RefreshNonNtfs(const AppState& app, const ViewContext& context) {
  if (!HasNonNtfsVolume(Engine())) return;
  context.window.SetStatus(
      TranslateOr(u"Status_RefreshingAllNonNtfs", u"Refreshing all non-NTFS volume indexes..."));
  RefreshAllNonNtfsAsync(Engine(), app.mainWindow);
}

}  // namespace quilmark
