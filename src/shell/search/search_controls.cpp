#include "shell/search/search_controls.h"

#include <algorithm>
#include <utility>

#include "config/translate.h"
#include "config/window_settings.h"
#include "search/query/query.h"
#include "search/results/search_pipeline.h"
#include "shell/search/filter_request.h"
#include "shell/search/highlight.h"
#include "shell/search/picked_query.h"
#include "shell/search/rename.h"
#include "shell/search/scope_items.h"
#include "shell/search/search_keys.h"
#include "shell/search/search_places.h"
#include "shell/view/commands.h"
#include "shell/view/window_ids.h"

namespace quilmark {

namespace {

constexpr size_t kLongestRange = 127;

bool SizeIsCustom() { return CurrentWindowSettings.sizePreset == kCustomSize; }
bool TimeIsCustom() { return CurrentWindowSettings.timePreset == kCustomTime; }

void AddTags(const std::vector<std::u16string>& captions, std::vector<ControlSpec>& specs) {
  int id = kFirstTag;
  for (const std::u16string& caption : captions) {
    specs.push_back({.kind = ControlKind::kTag, .id = id++, .text = caption});
  }
}

// The controls of the custom range come and go with it.
Effects ChoosePreset(SearchView& view, const ViewContext& context, int& preset, int chosen) {
  preset = std::max(chosen, 0);
  SaveWindowSettings(context.window.Placement());
  Effects effects = CancelRename(view, context);
  effects.Join(ApplyFilters(view, context));
  effects.Join({.relayout = true, .dirty = context.client});
  return effects;
}

Effects OnScopeChosen(const SearchView& view, const ViewContext& context, int index) {
  context.window.StopTimer(TIMER_SEARCH_DEBOUNCE);
  if (index >= 0) ChooseScope(view, index);
  return {.focus = Focus::kSearchBox};
}

Effects OnChosen(SearchView& view, const ViewContext& context, const ControlEvent& event) {
  switch (event.id) {
    case kScopeBox:
      return OnScopeChosen(view, context, event.value);
    case kSizePreset:
      return ChoosePreset(view, context, CurrentWindowSettings.sizePreset, event.value);
    case kTimePreset:
      return ChoosePreset(view, context, CurrentWindowSettings.timePreset, event.value);
    case kSizeUnit:
      CurrentWindowSettings.sizeUnit = event.value < 0 ? 2 : event.value;
      return SizeIsCustom() ? ApplyFilters(view, context) : Effects();
    default:
      return {.isTaken = false};
  }
}

Effects OnText(SearchView& view, const ViewContext& context, const ControlEvent& event) {
  if (event.id == kQueryBox) return TakeTypedText(view, context, event.text);
  if (event.id == kSecondSizeBox) return TimeIsCustom() ? ApplyFilters(view, context) : Effects();
  if (event.id != kSizeBox) return {.isTaken = false};
  CurrentWindowSettings.sizeRange = event.text;
  return SizeIsCustom() ? ApplyFilters(view, context) : Effects();
}

Effects OnDay(SearchView& view, const ViewContext& context, const ControlEvent& event) {
  int& day = event.id == kDateFrom ? CurrentWindowSettings.timeStart : CurrentWindowSettings.timeEnd;
  day = event.value;
  if (IsEmpty(context.client)) return {};  // a field that was just made reports what it shows
  return TimeIsCustom() ? ApplyFilters(view, context) : Effects();
}

// Keys of the editor of a name, and the loss of its focus.
Effects OnEditorEnd(SearchView& view, const ViewContext& context, const ControlEvent& event) {
  if (!view.renaming) return {};  // it was closed meanwhile
  switch (event.kind) {
    case ControlEvent::kEnter:
      return CommitRename(view, context, event.text, CommitEnd::kByKey);
    case ControlEvent::kLeft:
      return CommitRename(view, context, event.text, CommitEnd::kByLeaving);
    case ControlEvent::kLeftProgram:
      return CommitRename(view, context, event.text, CommitEnd::kByLeavingTheProgram);
    default: {
      Effects effects = CancelRename(view, context);
      effects.focus = Focus::kSearchBox;
      return effects;
    }
  }
}

}  // namespace

std::vector<ControlSpec> SearchView::Controls() {
  const WindowSettings& kept = CurrentWindowSettings;
  const std::u16string range = TranslateOr(u"Time_RangeDefault", u"0-7(days ago)");
  std::vector<ControlSpec> specs = {
      {.kind = ControlKind::kCombo,
       .id = kScopeBox,
       .listWidth = 460,
       .items = RenewScopeItems(*this, Engine()),
       .chosen = TheSearch().scope.scopeIndex},
      {.kind = ControlKind::kSearchBox, .id = kQueryBox, .isEnabled = false, .longest = kLongestQuery},
      {.kind = ControlKind::kCombo,
       .id = kSizePreset,
       .listWidth = 160,
       .items = SizePresetItems(),
       .chosen = kept.sizePreset},
      {.kind = ControlKind::kCombo,
       .id = kTimePreset,
       .listWidth = 160,
       .items = TimePresetItems(),
       .chosen = kept.timePreset},
      {.kind = ControlKind::kEdit, .id = kSizeBox, .text = kept.sizeRange, .longest = kLongestRange},
      {.kind = ControlKind::kEdit, .id = kSecondSizeBox, .text = range, .longest = kLongestRange},
      {.kind = ControlKind::kCombo,
       .id = kSizeUnit,
       .listWidth = 90,
       .items = SizeUnitItems(),
       .chosen = kept.sizeUnit},
      {.kind = ControlKind::kDay, .id = kDateFrom, .day = kept.timeStart},
      {.kind = ControlKind::kDay, .id = kDateTo, .day = kept.timeEnd}};
  tagCaptions = TagCaptions({});
  AddTags(tagCaptions, specs);
  return specs;
}

std::vector<ControlPlace> SearchView::Layout(const ViewContext& context) {
  const TopRowLayout row = LayoutTopRow({.clientWidth = context.client.right,
                                         .dpi = context.dpi,
                                         .sizeCustom = SizeIsCustom(),
                                         .timeCustom = TimeIsCustom()});
  std::vector<ControlPlace> places = {{kScopeBox, row.scope},
                                      {kQueryBox, row.search, isBoxEnabled},
                                      {kSizePreset, row.sizePreset},
                                      {kTimePreset, row.timePreset}};
  if (SizeIsCustom()) {
    places.push_back({kSizeBox, row.sizeBox});
    places.push_back({kSizeUnit, row.sizeUnit});
  }
  if (TimeIsCustom()) {
    places.push_back({kDateFrom, row.dateFrom});
    places.push_back({kDateTo, row.dateTo});
  }
  const FilterBarLayout bar = PlaceTagButtons(*this, context);
  headerTop = bar.headerTop;
  PlaceList(*this, context);
  int id = kFirstTag;
  for (const Rect& tag : bar.tags) places.push_back({id++, tag});
  return places;
}

Effects TakeTypedText(SearchView& view, const ViewContext& context, std::u16string text) {
  context.window.StopTimer(TIMER_SEARCH_DEBOUNCE);
  const bool asksForTypes = AsksForPicker(TheSearch().CurrentQueryText, text);
  const bool marksOthers = HighlightTerm(text) != HighlightTerm(TheSearch().CurrentQueryText);
  TheSearch().CurrentQueryText = std::move(text);
  if (!IsContentPrefix(TheSearch().CurrentQueryText)) {
    context.window.StartTimer(TIMER_SEARCH_DEBOUNCE, kSearchDebounceMs);
  }
  return {.dirty = marksOthers ? ListAreaOf(view, context) : Rect(),
          .command = asksForTypes ? kCommandFileTypes : uint16_t{0}};
}

static uint32_t KeyOf(ControlEvent::Kind kind) {
  if (kind == ControlEvent::kEnter) return kKeyEnter;
  return kind == ControlEvent::kF4 ? kKeyF4 : kKeyEscape;
}

Effects SearchView::OnControl(const ControlEvent& event, const ViewContext& context) {
  switch (event.kind) {
    case ControlEvent::kText:
      return OnText(*this, context, event);
    case ControlEvent::kChosen:
      return OnChosen(*this, context, event);
    case ControlEvent::kClicked:
      return SelectFilterTag(*this, context, event.id - kFirstTag);
    case ControlEvent::kDay:
      return OnDay(*this, context, event);
    default:
      break;
  }
  if (event.id == kNameEditor) return OnEditorEnd(*this, context, event);
  if (event.id != kQueryBox) return {.isTaken = false};
  return TakeSearchKey(context, KeyOf(event.kind), event.text);
}

}  // namespace quilmark
