#include "shell/win32/controls/filter_bar.h"

#include <commctrl.h>

#include <utility>

#include "config/translate.h"
#include "config/window_settings.h"
#include "platform/win32/wide.h"
#include "search/filtered_results.h"
#include "shell/app/app_state.h"
#include "shell/search/filter_request.h"
#include "shell/search/search_places.h"
#include "shell/view/tag.h"
#include "shell/view/window_ids.h"
#include "shell/win32/controls/combo.h"
#include "shell/win32/controls/controls.h"
#include "shell/win32/controls/date_picker.h"
#include "shell/win32/controls/edit_keys.h"
#include "shell/win32/controls/search_box.h"
#include "shell/win32/controls/window_text.h"
#include "shell/win32/gdi/gdi_canvas.h"

namespace quilmark {

namespace {

constexpr UINT_PTR kSubclass = 1;
constexpr size_t kLongestRange = 127;
constexpr int kTagHeight = 40;  // pixels at 96 dpi

// True if there was something to do.
bool Move(HWND control, const Rect& rect, bool isShown) {
  if (FromRECT(RectInParent(control)) == rect && (IsWindowVisible(control) != FALSE) == isShown)
    return false;
  SetWindowPos(control, nullptr, rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top,
               SWP_NOZORDER | SWP_NOACTIVATE | (isShown ? SWP_SHOWWINDOW : SWP_HIDEWINDOW));
  return true;
}

bool SizeIsCustom() { return CurrentWindowSettings.sizePreset == kCustomSize; }
bool TimeIsCustom() { return CurrentWindowSettings.timePreset == kCustomTime; }

LRESULT CALLBACK FramedProcedure(HWND control, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                 DWORD_PTR) {
  if (const auto taken = TakeEditMessage(control, message, wParam, lParam)) return *taken;
  if (message == WM_KEYDOWN && wParam == VK_RETURN) return 0;
  if (message == WM_NCDESTROY) RemoveWindowSubclass(control, FramedProcedure, kSubclass);
  const LRESULT result = DefSubclassProc(control, message, wParam, lParam);
  if (message == WM_PAINT) FrameClient(control, FrameColorOf(control));
  if (message == WM_SETFOCUS || message == WM_KILLFOCUS) InvalidateRect(control, nullptr, FALSE);
  return result;
}

// Fills what a rounded tag leaves at its corners, and knows whether the mouse is over it.
LRESULT CALLBACK TagProcedure(HWND tag, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                              DWORD_PTR) {
  if (TakeTabKey(tag, message, wParam)) return 0;
  const int index = GetDlgCtrlID(tag) - kFirstTag;
  if (message == WM_ERASEBKGND) {
    FillClient(tag, reinterpret_cast<HDC>(wParam), CurrentPalette.toolbar);
    return 1;
  }
  if (message == WM_MOUSEMOVE && App().list.hoverTag != index) {
    App().list.hoverTag = index;
    InvalidateRect(tag, nullptr, FALSE);
    TRACKMOUSEEVENT track = {};
    track.cbSize = sizeof track;
    track.dwFlags = TME_LEAVE;
    track.hwndTrack = tag;
    TrackMouseEvent(&track);
  }
  if (message == WM_MOUSELEAVE) {
    if (App().list.hoverTag == index) App().list.hoverTag = -1;
    InvalidateRect(tag, nullptr, FALSE);
  }
  if (message == WM_NCDESTROY) RemoveWindowSubclass(tag, TagProcedure, kSubclass);
  return DefSubclassProc(tag, message, wParam, lParam);
}

HWND MakeEdit(HWND parent, int id, HFONT font) {
  const HWND edit = MakeControl(parent, {L"EDIT", WS_TABSTOP | ES_AUTOHSCROLL | ES_MULTILINE, id}, font);
  SendMessageW(edit, EM_SETLIMITTEXT, kLongestRange, 0);
  SetWindowSubclass(edit, FramedProcedure, kSubclass, 0);
  return edit;
}

}  // namespace

void FilterBar::Open(HWND parent, HFONT font, HFONT tagFont) {
  sizePreset_ = MakeCombo(parent, kSizePreset, font);
  timePreset_ = MakeCombo(parent, kTimePreset, font);
  sizeBox_ = MakeEdit(parent, kSizeBox, font);
  secondSizeBox_ = MakeEdit(parent, kSecondSizeBox, font);
  sizeUnit_ = MakeCombo(parent, kSizeUnit, font);
  dateFrom_ = MakeDatePicker(parent, kDateFrom, font);
  dateTo_ = MakeDatePicker(parent, kDateTo, font);
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
    const HWND tag = CreateWindowExW(
        WS_EX_COMPOSITED, L"BUTTON", Wide(captions[i]),
        WS_CHILD | WS_TABSTOP | BS_OWNERDRAW | BS_MULTILINE, 0, 0, 10, Scaled(kTagHeight), parent,
        reinterpret_cast<HMENU>(static_cast<INT_PTR>(kFirstTag) + static_cast<INT_PTR>(i)),
        GetModuleHandleW(nullptr), nullptr);
    SendMessageW(tag, WM_SETFONT, reinterpret_cast<WPARAM>(tagFont_), FALSE);
    SetWindowSubclass(tag, TagProcedure, kSubclass, 0);
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
  if (Move(sizeBox_, row.sizeBox, SizeIsCustom())) ApplySearchBoxRect(sizeBox_);
  PlaceCombo(sizeUnit_, row.sizeUnit, SizeIsCustom());
  Move(dateFrom_, row.dateFrom, TimeIsCustom());
  Move(dateTo_, row.dateTo, TimeIsCustom());
}

int FilterBar::PlaceTags() {
  const FilterBarLayout layout = PlaceTagButtons(App(), CurrentFonts());
  for (size_t i = 0; i < tags_.size(); ++i) {
    if (i < layout.tags.size()) {
      Move(tags_[i], layout.tags[i], true);
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

void DrawTagItem(const DRAWITEMSTRUCT& item) {
  const int index = static_cast<int>(item.CtlID) - kFirstTag;
  const Rect place = FromRECT(item.rcItem);
  GdiCanvas canvas(item.hDC, CurrentFonts(), place);
  canvas.Fill(place, CurrentPalette.toolbar);
  PaintTag(canvas, ContextOf(item.hwndItem), place, SplitCaption(TextOfWindow(item.hwndItem)),
           {.isChosen = index == ActiveCategory,
            .isHot = index == App().list.hoverTag,
            .hasFocus = (item.itemState & ODS_FOCUS) != 0});
}

}  // namespace quilmark
