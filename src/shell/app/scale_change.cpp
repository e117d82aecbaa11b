#include "shell/app/scale_change.h"

#include "platform/mul_div.h"

namespace quilmark {

bool TakeScaleChange(AppState& app, WindowSettings& settings, uint32_t newDpi) {
  const int former = app.systemDpi == 0 ? 96 : static_cast<int>(app.systemDpi);
  const int wanted = newDpi == 0 ? 96 : static_cast<int>(newDpi);
  if (former == wanted) return false;
  for (int& width : settings.columnWidth) width = MulDiv(width, wanted, former);
  app.sidebarWidth = MulDiv(app.sidebarWidth, wanted, former);
  app.pathColumnWidth = MulDiv(app.pathColumnWidth, wanted, former);
  app.scrollY = app.scrollY * wanted / former;  // the same rows stay in view
  app.scrollX = MulDiv(app.scrollX, wanted, former);
  app.headerTop = MulDiv(app.headerTop, wanted, former);
  app.systemDpi = static_cast<uint32_t>(wanted);
  return true;
}

}  // namespace quilmark
