#include "shell/win32/controls/filter_bar.h"

#include <algorithm>
#include <utility>

#include "config/translate.h"
#include "config/window_settings.h"
#include "platform/win32/wide.h"
#include "search/filtered_results.h"
#include "shell/app/app_state.h"
#include "shell/search/filter_request.h"
#include "shell/search/search_keys.h"
#include "shell/search/search_places.h"
#include "shell/view/tag.h"
#include "shell/view/window_ids.h"
#include "shell/win32/controls/combo.h"
#include "shell/win32/controls/controls.h"
#include "shell/win32/controls/date_picker.h"
#include "shell/win32/controls/drop_list.h"
#include "shell/win32/controls/edit_line.h"
#include "shell/win32/controls/framed_edit.h"
#include "shell/win32/controls/search_box.h"
#include "shell/win32/controls/tag_button.h"
#include "shell/win32/controls/window_text.h"
#include "shell/win32/window/main_window.h"

namespace quilmark {

namespace {

constexpr size_t kLongestRange = 127;

struct DropRow {
  int id;
  int width;  // of the drop list, pixels at 96 dpi
};
constexpr DropRow kDropRows[] = {
    {kScopeBox, 460}, {kSizePreset, 160}, {kTimePreset, 160}, {kSizeUnit, 90}};

const DropRow* FindDropRow(int id) {
  const auto* const row = std::find_if(std::begin(kDropRows), std::end(kDropRows),
                                       [id](const DropRow& each) { return each.id == id; });
  return row == std::end(kDropRows) ? nullptr : row;
}

class Host : public ControlHost {
 public:
  ViewContext Context() const override { return TheWindow().Context(); }
  const GdiFonts& Fonts() const override { return CurrentFonts(); }
  bool IsDark() const override { return CurrentWindowSettings.darkTheme && !CurrentPalette.isSystem; }
  bool OnControl(const ControlEvent& event) override {
    return TakeSearchKey(TheWindow(), event.kind == ControlEvent::kEnter ? kKeyEnter : kKeyEscape,
                         event.text);
  }
  void PaintControl(Canvas& canvas, const ControlPicture& control) const override {
    const int index = control.id - kFirstTag;
    PaintTag(
        canvas, Context(), control.place, SplitCaption(App().tagCaptions[static_cast<size_t>(index)]),
        {.isChosen = index == ActiveCategory, .isHot = control.isHot, .hasFocus = control.hasFocus});
  }
};

bool SizeIsCustom() { return CurrentWindowSettings.sizePreset == kCustomSize; }
bool TimeIsCustom() { return CurrentWindowSettings.timePreset == kCustomTime; }

}  // namespace

ControlHost& MainWindowHost() {
  static Host host;
  return host;
}

int Scaled(int n) { return ScaleFor(App().systemDpi, n); }

bool IsCustomCombo(UINT id) { return FindDropRow(static_cast<int>(id)) != nullptr; }

HWND MakeSearchBox(HWND parent, HFONT) {
  const HWND edit = MakeSearchBox(parent, kQueryBox, kLongestQuery, MainWindowHost());
  EnableWindow(edit, FALSE);
  ShowWindow(edit, SW_SHOWNA);
  return edit;
}

HWND MakeCombo(HWND parent, int id, HFONT) { return MakeCombo(parent, id, MainWindowHost()); }

void PlaceCombo(HWND combo, const Rect& field, bool isShown) {
  const DropRow* const row = FindDropRow(GetDlgCtrlID(combo));
  PlaceCombo(combo, {.field = field, .listWidth = row == nullptr ? 0 : row->width, .isShown = isShown},
             App().systemDpi);
}

void DrawComboItem(const DRAWITEMSTRUCT& item) { DrawComboItem(item, MainWindowHost()); }

void StyleDropDown(HWND combo) { StyleDropDown(combo, MainWindowHost()); }

void StyleDatePicker(HWND picker) { StyleDatePicker(picker, MainWindowHost()); }

void ApplySearchBoxRect(HWND edit) { CentreField(edit, App().systemDpi); }

void DrawTagItem(const DRAWITEMSTRUCT& item) { DrawTagButton(item, MainWindowHost()); }

void FilterBar::Open(HWND parent, HFONT font, HFONT tagFont) {
  sizePreset_ = MakeCombo(parent, kSizePreset, font);
  timePreset_ = MakeCombo(parent, kTimePreset, font);
  sizeBox_ = MakeFramedEdit(parent, kSizeBox, kLongestRange, MainWindowHost());
  secondSizeBox_ = MakeFramedEdit(parent, kSecondSizeBox, kLongestRange, MainWindowHost());
  sizeUnit_ = MakeCombo(parent, kSizeUnit, font);
  dateFrom_ = MakeDatePicker(parent, kDateFrom, MainWindowHost());
  dateTo_ = MakeDatePicker(parent, kDateTo, MainWindowHost());
  FillCombo(sizePreset_, SizePresetItems(), CurrentWindowSettings.sizePreset);
  FillCombo(timePreset_, TimePresetItems(), CurrentWindowSettings.timePreset);
  FillCombo(sizeUnit_, SizeUnitItems(), CurrentWindowSettings.sizeUnit);
  const std::u16string range = CurrentWindowSettings.sizeRange;
  SetWindowTextW(sizeBox_, Wide(range));
  SetWindowTextW(secondSizeBox_, Wide(TranslateOr(u"Time_RangeDefault", u"0-7(days ago)")));
  SetDay(dateFrom_, CurrentWindowSettings.timeStart);
  SetDay(dateTo_, CurrentWindowSettings.timeEnd);
  ReadDates();  // a picker without a day of its own shows today
  tagFont_ = tagFont;
  RebuildTags(parent);
}

void FilterBar::SetFonts(HFONT font, HFONT tagFont) {
  for (const HWND control :
       {sizePreset_, timePreset_, sizeBox_, secondSizeBox_, sizeUnit_, dateFrom_, dateTo_}) {
    SendMessageW(control, WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
  }
  ApplySearchBoxRect(sizeBox_);  // a new font puts the text back to the top
  tagFont_ = tagFont;
  for (const HWND tag : tags_) SendMessageW(tag, WM_SETFONT, reinterpret_cast<WPARAM>(tagFont), TRUE);
}

void FilterBar::RebuildTags(HWND parent) {
  for (const HWND tag : tags_) DestroyWindow(tag);
  tags_.clear();
  App().tagCaptions = TagCaptions({});
  const auto& captions = App().tagCaptions;
  for (size_t i = 0; i < captions.size(); ++i) {
    const HWND tag = MakeTagButton(parent, kFirstTag + static_cast<int>(i), MainWindowHost());
    SetWindowTextW(tag, Wide(captions[i]));
    tags_.push_back(tag);
  }
}

bool FilterBar::SetCaptions(const std::vector<std::u16string>& captions) {
  bool isChanged = false;
  for (size_t i = 0; i < tags_.size() && i < captions.size(); ++i) {
    if (std::exchange(App().tagCaptions[i], captions[i]) == captions[i]) continue;
    SetWindowTextW(tags_[i], Wide(captions[i]));
    InvalidateRect(tags_[i], nullptr, FALSE);
    isChanged = true;
  }
  return isChanged;
}

void FilterBar::RedrawTags() const {
  for (const HWND tag : tags_) InvalidateRect(tag, nullptr, FALSE);
}

void FilterBar::Place(const TopRowLayout& row) {
  PlaceCombo(sizePreset_, row.sizePreset, true);
  PlaceCombo(timePreset_, row.timePreset, true);
  if (MoveControl(sizeBox_, row.sizeBox, SizeIsCustom())) ApplySearchBoxRect(sizeBox_);
  PlaceCombo(sizeUnit_, row.sizeUnit, SizeIsCustom());
  MoveControl(dateFrom_, row.dateFrom, TimeIsCustom());
  MoveControl(dateTo_, row.dateTo, TimeIsCustom());
}

int FilterBar::PlaceTags() {
  const FilterBarLayout layout = PlaceTagButtons(App(), CurrentFonts());
  for (size_t i = 0; i < tags_.size(); ++i) {
    if (i < layout.tags.size()) {
      MoveControl(tags_[i], layout.tags[i], true);
    } else {
      ShowWindow(tags_[i], SW_HIDE);
    }
  }
  return layout.headerTop;
}

void FilterBar::ReadDates() const {
  CurrentWindowSettings.timeStart = DayOf(dateFrom_);
  CurrentWindowSettings.timeEnd = DayOf(dateTo_);
}

void FilterBar::ReadSizeText() const {
  CurrentWindowSettings.sizeRange = TextOfWindow(sizeBox_, kLongestRange);
}

}  // namespace quilmark
