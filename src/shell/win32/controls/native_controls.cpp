#include "shell/win32/controls/native_controls.h"

#include <algorithm>
#include <utility>

#include "platform/win32/wide.h"
#include "shell/win32/controls/combo.h"
#include "shell/win32/controls/controls.h"
#include "shell/win32/controls/date_picker.h"
#include "shell/win32/controls/drop_list.h"
#include "shell/win32/controls/edit_line.h"
#include "shell/win32/controls/framed_edit.h"
#include "shell/win32/controls/search_box.h"
#include "shell/win32/controls/tag_button.h"
#include "shell/win32/controls/window_text.h"

namespace quilmark {

namespace {

class SetScope {
 public:
  explicit SetScope(bool& flag) : flag_(flag), former_(std::exchange(flag, true)) {}
  ~SetScope() { flag_ = former_; }
  SetScope(const SetScope&) = delete;
  SetScope& operator=(const SetScope&) = delete;

 private:
  bool& flag_;
  bool former_;
};

bool IsEdit(ControlKind kind) { return kind == ControlKind::kSearchBox || kind == ControlKind::kEdit; }

bool HasText(ControlKind kind) { return IsEdit(kind) || kind == ControlKind::kTag; }

// Gives the focus back to the window: keys that go to a hidden control would be lost.
void GiveUpFocus(HWND control) {
  if (HasFocusIn(control)) SetFocus(GetParent(control));
}

void Hide(HWND control) {
  if (!IsShown(control)) return;
  GiveUpFocus(control);
  ShowWindow(control, SW_HIDE);
}

void SetEnabled(HWND control, bool isEnabled) {
  if ((IsWindowEnabled(control) != FALSE) == isEnabled) return;
  if (!isEnabled) GiveUpFocus(control);
  EnableWindow(control, isEnabled ? TRUE : FALSE);
  InvalidateRect(control, nullptr, TRUE);
}

}  // namespace

void NativeControls::Make(HWND parent, std::span<const ControlSpec> specs, ControlHost& host) {
  const SetScope writing(isWriting_);
  host_ = &host;
  for (const ControlSpec& spec : specs) {
    // In the list before it is made: a combo asks for its heights meanwhile.
    controls_.push_back({.kind = spec.kind, .id = spec.id, .listWidth = spec.listWidth});
    const HWND window = MakeOne(parent, spec);
    controls_.back().window = window;
    FillOne(controls_.back(), spec);
  }
}

HWND NativeControls::MakeOne(HWND parent, const ControlSpec& spec) {
  switch (spec.kind) {
    case ControlKind::kSearchBox:
      return MakeSearchBox(parent, spec.id, spec.longest, *host_);
    case ControlKind::kEdit:
      return MakeFramedEdit(parent, spec.id, spec.longest, *host_);
    case ControlKind::kCombo:
      return MakeCombo(parent, spec.id, *host_);
    case ControlKind::kDay:
      return MakeDatePicker(parent, spec.id, *host_);
    case ControlKind::kTag:
      break;
  }
  return MakeTagButton(parent, spec.id, *host_);
}

void NativeControls::FillOne(const Control& control, const ControlSpec& spec) {
  if (HasText(spec.kind) && !spec.text.empty()) SetWindowTextW(control.window, Wide(spec.text));
  if (spec.kind == ControlKind::kCombo) FillCombo(control.window, spec.items, spec.chosen);
  if (spec.kind == ControlKind::kDay) quilmark::SetDay(control.window, spec.day);
  SetEnabled(control.window, spec.isEnabled);
}

void NativeControls::Place(std::span<const ControlPlace> places) {
  for (const Control& control : controls_) {
    const auto place = std::find_if(places.begin(), places.end(), [&control](const ControlPlace& each) {
      return each.id == control.id;
    });
    if (place == places.end()) {
      Hide(control.window);
    } else {
      PlaceOne(control, *place);
    }
  }
}

void NativeControls::PlaceOne(const Control& control, const ControlPlace& place) {
  SetEnabled(control.window, place.isEnabled);
  const uint32_t dpi = host_->Context().dpi;
  if (control.kind == ControlKind::kCombo) {
    PlaceCombo(control.window, {.field = place.place, .listWidth = control.listWidth}, dpi);
    return;
  }
  const bool isMoved = MoveControl(control.window, place.place, true);
  if (isMoved && IsEdit(control.kind)) CentreField(control.window, dpi);
}

void NativeControls::SetText(int id, const std::u16string& text) {
  const Control* const control = Find(id);
  if (control == nullptr || !HasText(control->kind) || TextOfWindow(control->window) == text) return;
  const SetScope writing(isWriting_);
  SetWindowTextW(control->window, Wide(text));
  if (control->kind == ControlKind::kTag) InvalidateRect(control->window, nullptr, FALSE);
}

void NativeControls::SetItems(int id, const std::vector<std::u16string>& items, int chosen) {
  const Control* const combo = Find(id, ControlKind::kCombo);
  if (combo == nullptr) return;
  const SetScope writing(isWriting_);
  FillCombo(combo->window, items, chosen);
}

void NativeControls::SetDay(int id, int day) {
  const Control* const field = Find(id, ControlKind::kDay);
  if (field == nullptr) return;
  const SetScope writing(isWriting_);
  quilmark::SetDay(field->window, day);
}

void NativeControls::Enable(int id) {
  if (const Control* const control = Find(id)) SetEnabled(control->window, true);
}

void NativeControls::RedrawTags() const {
  for (const Control& control : controls_) {
    if (control.kind == ControlKind::kTag) InvalidateRect(control.window, nullptr, FALSE);
  }
}

void NativeControls::TakeFonts() {
  for (const Control& control : controls_) {
    const FontRole role = control.kind == ControlKind::kTag ? FontRole::kFilter : FontRole::kMain;
    SendMessageW(control.window, WM_SETFONT, reinterpret_cast<WPARAM>(host_->Fonts().Of(role)), TRUE);
    if (IsEdit(control.kind)) CentreField(control.window, host_->Context().dpi);
  }
}

bool NativeControls::Focus(int id) {
  const HWND control = HandleOf(id);
  const bool canTakeIt = control != nullptr && IsShown(control) && IsWindowEnabled(control);
  if (canTakeIt) SetFocus(control);
  return canTakeIt;
}

bool NativeControls::IsEnabled(int id) const {
  const HWND control = HandleOf(id);
  return control != nullptr && IsWindowEnabled(control);
}

int NativeControls::DayOf(int id) const {
  const Control* const field = Find(id, ControlKind::kDay);
  return field == nullptr ? 0 : quilmark::DayOf(field->window);
}

HWND NativeControls::HandleOf(int id) const {
  const Control* const control = Find(id);
  return control == nullptr ? nullptr : control->window;
}

const NativeControls::Control* NativeControls::Find(int id) const {
  const auto control = std::find_if(controls_.begin(), controls_.end(),
                                    [id](const Control& each) { return each.id == id; });
  return control == controls_.end() ? nullptr : &*control;
}

const NativeControls::Control* NativeControls::Find(int id, ControlKind kind) const {
  const Control* const control = Find(id);
  return control != nullptr && control->kind == kind ? control : nullptr;
}

std::optional<LRESULT> NativeControls::TakeMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  // A menu or a key sends this too, without a control; a script sends it after it has changed a text.
  const bool isOfText = message == WM_COMMAND && HIWORD(wParam) == EN_CHANGE;
  if (lParam == 0 && !isOfText) return std::nullopt;
  switch (message) {
    case WM_COMMAND:
      return TakeCommand(LOWORD(wParam), HIWORD(wParam));
    case WM_NOTIFY:
      return TakeNotice(*reinterpret_cast<const NMHDR*>(lParam));
    case WM_DRAWITEM:
      return Draw(*reinterpret_cast<const DRAWITEMSTRUCT*>(lParam));
    case WM_MEASUREITEM:
      return Measure(*reinterpret_cast<MEASUREITEMSTRUCT*>(lParam));
    default:
      return std::nullopt;
  }
}

std::optional<LRESULT> NativeControls::TakeCommand(int id, int code) {
  const Control* const control = Find(id);
  if (control == nullptr) return std::nullopt;
  if (control->kind == ControlKind::kCombo) return TakeComboCode(*control, code);
  if (IsEdit(control->kind) && code == EN_CHANGE) {
    return Tell({.kind = ControlEvent::kText, .id = id, .text = TextOfEdit(control->window)});
  }
  if (control->kind == ControlKind::kTag && code == BN_CLICKED) {
    return Tell({.kind = ControlEvent::kClicked, .id = id});
  }
  return std::nullopt;
}

std::optional<LRESULT> NativeControls::TakeComboCode(const Control& combo, int code) {
  switch (code) {
    case CBN_DROPDOWN:
      StyleDropDown(combo.window, *host_);
      return 0;
    case CBN_CLOSEUP:
      UnstyleDropDown(combo.window);
      return 0;
    case CBN_SELCHANGE:
      InvalidateRect(combo.window, nullptr, FALSE);
      return Tell({.kind = ControlEvent::kChosen, .id = combo.id, .value = ChosenIn(combo.window)});
    default:
      return std::nullopt;
  }
}

std::optional<LRESULT> NativeControls::TakeNotice(const NMHDR& notice) {
  const Control* const field = Find(static_cast<int>(notice.idFrom), ControlKind::kDay);
  if (field == nullptr) return std::nullopt;
  if (notice.code == DTN_DROPDOWN) {
    StyleDatePicker(field->window, *host_);
    return 0;
  }
  if (notice.code != DTN_DATETIMECHANGE) return std::nullopt;
  return Tell({.kind = ControlEvent::kDay, .id = field->id, .value = quilmark::DayOf(field->window)});
}

std::optional<LRESULT> NativeControls::Draw(const DRAWITEMSTRUCT& item) const {
  const Control* const control = Find(static_cast<int>(item.CtlID));
  if (control == nullptr) return std::nullopt;
  if (control->kind == ControlKind::kCombo) {
    DrawComboItem(item, *host_);
    return TRUE;
  }
  if (control->kind != ControlKind::kTag) return std::nullopt;
  DrawTagButton(item, *host_);
  return TRUE;
}

std::optional<LRESULT> NativeControls::Measure(MEASUREITEMSTRUCT& item) const {
  if (Find(static_cast<int>(item.CtlID), ControlKind::kCombo) == nullptr) return std::nullopt;
  MeasureComboItem(item, host_->Context().dpi);
  return TRUE;
}

// Reports an event, unless the program itself is changing a control.
std::optional<LRESULT> NativeControls::Tell(const ControlEvent& event) {
  if (!isWriting_) host_->OnControl(event);
  return 0;
}

}  // namespace quilmark
