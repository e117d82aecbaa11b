#include "shell/win32/filter_bar.h"

#include <commctrl.h>

#include "config/contrast.h"
#include "config/translate.h"
#include "config/window_settings.h"
#include "platform/win32/wide.h"
#include "search/filtered_results.h"
#include "shell/app_state.h"
#include "shell/filter_request.h"
#include "shell/win32/canvas.h"
#include "shell/win32/combo.h"
#include "shell/win32/controls.h"
#include "shell/win32/date_picker.h"
#include "shell/win32/edit_keys.h"
#include "shell/win32/main_window.h"
#include "shell/win32/search_box.h"
#include "shell/win32/window_text.h"
#include "shell/window_ids.h"

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

Color MutedOn(Color ground) {
  if (CurrentPalette.isSystem) return CurrentPalette.text;
  return ReadableOn(ground, CurrentPalette.muted);
}

int WidthOfTag(const Canvas& canvas, const std::u16string& caption) {
  const TagText text = SplitCaption(caption);
  return FilterTagWidth(App().systemDpi, canvas.WidthOf(text.name.data(), text.name.size()),
                        canvas.WidthOf(text.count.data(), text.count.size()));
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
  captions_ = TagCaptions({});
  for (size_t i = 0; i < captions_.size(); ++i) {
    const HWND tag = CreateWindowExW(
        WS_EX_COMPOSITED, L"BUTTON", Wide(captions_[i]),
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
    if (captions_[i] == captions[i]) continue;
    captions_[i] = captions[i];
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

int FilterBar::PlaceTags(int clientWidth) {
  FilterBarInput input{.clientWidth = clientWidth,
                       .dpi = App().systemDpi,
                       .sidebar = CurrentWindowSettings.sidebarLayout,
                       .tagWidths = {}};
  const WindowDc dc(nullptr);
  const SelectScope font(dc.Get(), tagFont_);
  for (const std::u16string& caption : captions_)
    input.tagWidths.push_back(WidthOfTag({dc.Get()}, caption));
  const FilterBarLayout layout = LayoutFilterBar(input);
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

void DrawTag(HDC dc, const RECT& place, const std::u16string& caption, bool isChosen, bool isHot) {
  const Canvas canvas{dc};
  const Rect rect = FromRECT(place);
  const Color ground = isChosen ? CurrentPalette.accent
                       : isHot  ? CurrentPalette.accentSoft
                                : CurrentPalette.controlBackground;
  canvas.FillRound(rect, Scaled(8), ground);
  const Color color = isChosen ? CurrentPalette.accentText : CurrentPalette.text;
  const TagText text = SplitCaption(caption);
  SetBkMode(dc, TRANSPARENT);
  const int inset = Scaled(8), countWidth = canvas.WidthOf(text.count.data(), text.count.size());
  const int gap = Scaled(6), nameWidth = canvas.WidthOf(text.name.data(), text.name.size());
  const int width = rect.right - rect.left;
  const int shownName = std::min(nameWidth, std::max(width - 2 * inset - gap - countWidth, 0));
  const int left = rect.left + std::max((width - shownName - gap - countWidth) / 2, inset);
  canvas.Line({left, rect.top, left + shownName + 1, rect.bottom}, text.name, color);
  const int countLeft = left + shownName + gap;
  canvas.Line({countLeft, rect.top, countLeft + countWidth + 1, rect.bottom}, text.count,
              isChosen ? color : MutedOn(ground));
}

void DrawTagItem(const DRAWITEMSTRUCT& item) {
  const int index = static_cast<int>(item.CtlID) - kFirstTag;
  FillWith(item.hDC, item.rcItem, CurrentPalette.toolbar);
  const SelectScope selected(item.hDC, FontOf(item.hwndItem));
  DrawTag(item.hDC, item.rcItem, TextOfWindow(item.hwndItem), index == ActiveCategory,
          index == App().list.hoverTag);
  if ((item.itemState & ODS_FOCUS) != 0) {
    const UniquePen pen(CreatePen(PS_SOLID, 1, CurrentPalette.focusRing));
    const SelectScope outline(item.hDC, pen.Get());
    const SelectScope hollow(item.hDC, GetStockObject(HOLLOW_BRUSH));
    RoundRect(item.hDC, item.rcItem.left, item.rcItem.top, item.rcItem.right, item.rcItem.bottom,
              Scaled(8), Scaled(8));
  }
}

}  // namespace quilmark
