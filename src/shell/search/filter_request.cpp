#include "shell/search/filter_request.h"

#include <utility>

#include "config/translate.h"
#include "config/window_settings.h"
#include "platform/format.h"
#include "shell/search/search_places.h"
#include "shell/view/window_ids.h"

namespace quilmark {

namespace {

constexpr uint32_t kAskSoonMs = 60, kCountAgainMs = 250;

// Lays out anew: the tags change their widths, and with them perhaps the height of the bar.
Effects SetTagCaptions(SearchView& view, const ViewContext& context,
                       std::vector<std::u16string> captions) {
  if (captions == view.tagCaptions) return {};
  for (size_t i = 0; i < captions.size(); ++i) {
    const bool isSame = i < view.tagCaptions.size() && captions[i] == view.tagCaptions[i];
    if (!isSame) context.window.SetText(kFirstTag + static_cast<int>(i), captions[i]);
  }
  view.tagCaptions = std::move(captions);
  Effects effects = RedrawTags(view, context);
  effects.placesControls = true;
  if (PlaceTagButtons(view, context).headerTop != view.headerTop) {
    effects.relayout = true;
    effects.dirty = context.client;
  }
  return effects;
}

}  // namespace

FilterSettings CurrentFilterSettings() {
  const WindowSettings& kept = CurrentWindowSettings;
  return {.category = TheSearch().ActiveCategory,
          .sizePreset = kept.sizePreset,
          .timePreset = kept.timePreset,
          .sizeUnit = kept.sizeUnit,
          .sizeText = kept.sizeRange,
          .dateFrom = kept.timeStart,
          .dateTo = kept.timeEnd};
}

bool IsFilterActive() {
  return TheSearch().ActiveCategory != 0 || CurrentWindowSettings.sizePreset != 0 ||
         CurrentWindowSettings.timePreset != 0;
}

Effects ApplyFilters(SearchView& view, const ViewContext& context) {
  view.rows.scrollY = 0;
  view.engine.RefreshFilter(CurrentFilterSettings());
  Effects effects = RelayoutList(view, context);
  effects.dirty = ListAreaOf(view, context);
  return effects;
}

Effects SelectFilterTag(SearchView& view, const ViewContext& context, int index) {
  const auto rows = static_cast<int>(CurrentCategories()->size());
  TheSearch().ActiveCategory = index >= 0 && index < rows ? index : 0;
  Effects effects = RedrawTags(view, context);
  effects.Join(ApplyFilters(view, context));
  if (view.isBoxEnabled) effects.focus = Focus::kSearchBox;
  return effects;
}

Effects RefreshFilterCounts(SearchView& view, const ViewContext& context) {
  const FilterCounts counts = view.engine.CountByCategory(CurrentFilterSettings());
  if (counts.isIncomplete) context.window.StartTimer(kTimerScrollSettle, kAskSoonMs);
  if (counts.leavesOutAVolume) RefreshFilterCountsSoon(view, context, kCountAgainMs);
  return SetTagCaptions(view, context, TagCaptions(counts.byCategory));
}

void RefreshFilterCountsSoon(SearchView& view, const ViewContext& context, uint32_t delayMs) {
  view.filterCountsPending = true;
  context.window.StartTimer(kTimerFilterCounts, delayMs);
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
