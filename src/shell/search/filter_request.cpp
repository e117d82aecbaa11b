#include "shell/search/filter_request.h"

#include "config/translate.h"
#include "config/window_settings.h"
#include "platform/format.h"

namespace quilmark {

FilterSettings CurrentFilterSettings() {
  const WindowSettings& kept = CurrentWindowSettings;
  return {.category = ActiveCategory,
          .sizePreset = kept.sizePreset,
          .timePreset = kept.timePreset,
          .sizeUnit = kept.sizeUnit,
          .sizeText = kept.sizeRange,
          .dateFrom = kept.timeStart,
          .dateTo = kept.timeEnd};
}

void ApplyFilters(AppState& app, WindowPort& window) {
  app.scrollY = 0;
  RefreshFilteredResultsAsync(CurrentFilterSettings());
  window.RelayoutList();
  window.InvalidateList();
}

void SelectFilterTag(AppState& app, WindowPort& window, int index) {
  const auto rows = static_cast<int>(CurrentCategories()->size());
  ActiveCategory = index >= 0 && index < rows ? index : 0;
  window.RedrawTags();
  ApplyFilters(app, window);
  if (window.IsSearchBoxEnabled()) window.FocusSearchBox();
}

std::vector<std::u16string> TagCaptions(const std::vector<uint64_t>& counts) {
  const auto table = CurrentCategories();
  std::vector<std::u16string> captions;
  for (size_t i = 0; i < table->size(); ++i) {
    const uint64_t count = i < counts.size() ? counts[i] : 0;
    captions.push_back((*table)[i].label + FormatText(u"\r\n(%llu)", count));
  }
  return captions;
}

std::vector<std::u16string> SizePresetItems() {
  return {TranslateOr(u"Common_All", u"All"), u"< 1MB", u"1~100MB", u"> 100MB",
          TranslateOr(u"Common_Custom", u"Custom")};
}

std::vector<std::u16string> TimePresetItems() {
  return {TranslateOr(u"Common_All", u"All"), TranslateOr(u"Time_Today", u"Today"),
          TranslateOr(u"Time_7Days", u"7 days"), TranslateOr(u"Time_30Days", u"30 days"),
          TranslateOr(u"Common_Custom", u"Custom")};
}

std::vector<std::u16string> SizeUnitItems() { return {u"B", u"KB", u"MB", u"GB"}; }

}  // namespace quilmark
