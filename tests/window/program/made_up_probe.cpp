#include "window/program/made_up_probe.h"

#include "shell/app/routing.h"
#include "shell/view/made_up_view.h"

namespace quilmark {

namespace {

MadeUpView& TheView() {
  static MadeUpView view;
  return view;
}

}  // namespace

void OfferMadeUpView(AppState& app) { TakeMadeUpView(app, TheView()); }

std::optional<LRESULT> AskMadeUpView(AppState& app, MainWindow& window, Probe probe, uint32_t argument) {
  const MadeUpView& view = TheView();
  switch (probe) {
    case Probe::kShowMadeUpView: {
      const AppMode mode = argument != 0 ? AppMode::kDuplicates : AppMode::kSearch;
      window.CarryOut(SwitchMode(app, window.Context(), mode));
      return app.appMode == mode;
    }
    case Probe::kMadeUpScrollY:
      return (argument == 0 ? view.groups : view.files).scrollY;
    case Probe::kMadeUpHeldBars:
      return (view.groups.dragBar != Bar::kNone) + (view.files.dragBar != Bar::kNone);
    case Probe::kMadeUpHoverRow:
      return (argument == 0 ? view.groups : view.files).hoverRow;
    case Probe::kMadeUpChosen:
      return argument == 0 ? view.groupRows.chosen : view.fileRows.chosen;
    case Probe::kMadeUpScans:
      return view.scans;
    case Probe::kMadeUpDay:
      return view.day;
    default:
      return std::nullopt;
  }
}

}  // namespace quilmark
