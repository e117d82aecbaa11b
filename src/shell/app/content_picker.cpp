#include "shell/app/content_picker.h"

#include <string>
#include <vector>

#include "config/translate.h"
#include "config/window_settings.h"
#include "search/results/search_session.h"
#include "shell/search/picked_query.h"
#include "shell/search/search_keys.h"

namespace quilmark {

namespace {

// Puts the query into the box as if it had been typed, but for the search and for this window.
void TakePicked(WindowPort& window, const std::vector<std::u16string>& extensions) {
  CurrentWindowSettings.contentSearchExts = extensions;
  const PickedQuery query = WithExtensions(window.TextOf(kQueryBox), extensions, kLongestQuery);
  window.StopTimer(TIMER_SEARCH_DEBOUNCE);
  window.SetText(kQueryBox, query.text);
  TheSearch().CurrentQueryText = query.text;
  window.CarryOut({.focus = Focus::kSearchBox});
  window.PlaceCaret(kQueryBox, query.caret);
  SaveWindowSettings(window.Placement());
  window.SetStatus(TranslateOr(
      u"Status_ContentExtPicked",
      u"Content-search extensions set. Type keywords then Enter. You can still edit |exts manually."));
}

}  // namespace

void OpenContentExtPicker(AppState& app, WindowPort& window) {
  app.picker.whenPicked = [&window](const std::vector<std::u16string>& extensions) {
    TakePicked(window, extensions);
  };
  app.pickerWindow->OpenPickerWindow(app.picker);
}

}  // namespace quilmark
