#include "shell/win32/controls/ext_picker_window.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "config/translate.h"
#include "platform/clock.h"
#include "platform/win32/wide.h"
#include "shell/settings/picker_layout.h"
#include "shell/view/button.h"
#include "shell/view/window_ids.h"
#include "shell/win32/controls/controls.h"
#include "shell/win32/controls/drop_list.h"
#include "shell/win32/controls/edit_keys.h"
#include "shell/win32/controls/edit_line.h"
#include "shell/win32/controls/framed_edit.h"
#include "shell/win32/controls/tag_button.h"
#include "shell/win32/controls/window_text.h"
#include "shell/win32/system/file_operations.h"
#include "shell/win32/system/system_calls.h"

namespace quilmark {

namespace {

constexpr wchar_t kClass[] = L"QuilmarkContentExtPickerV4";
constexpr int kList = 42'170, kField = 42'184;
constexpr int kHint = 1, kLabel = 2;  // nobody asks for these
constexpr size_t kLongestField = 1'023;
constexpr UINT_PTR kKeys = 2;  // the procedure for keys, before those of the controls themselves

struct ButtonRow {
  int id;
  PickerCommand command;
  const char16_t *key, *english;
  Rect PickerPlaces::*place;
};
// In the order of the Tab key.
constexpr ButtonRow kButtons[] = {
    {42'185, PickerCommand::kAdd, u"ContentExt_Add", u"Add", &PickerPlaces::add},
    {42'187, PickerCommand::kDelete, u"ContentExt_Delete", u"Delete", &PickerPlaces::remove},
    {42'180, PickerCommand::kAccept, u"Button_OK", u"OK", &PickerPlaces::accept},
    {42'181, PickerCommand::kAll, u"ContentExt_SelectAll", u"All", &PickerPlaces::all},
    {42'186, PickerCommand::kInvert, u"ContentExt_Invert", u"Invert", &PickerPlaces::invert},
    {42'183, PickerCommand::kConfig, u"ContentExt_OpenConfig", u"Config", &PickerPlaces::config},
    {42'182, PickerCommand::kCancel, u"Button_Cancel", u"Cancel", &PickerPlaces::cancel},
};

const ButtonRow* ButtonOf(int id) {
  const auto* const row = std::find_if(std::begin(kButtons), std::end(kButtons),
                                       [id](const ButtonRow& one) { return one.id == id; });
  return row != std::end(kButtons) ? row : nullptr;
}

std::optional<PickerCommand> CommandOfKey(WPARAM key, int id) {
  if (key == VK_ESCAPE) return PickerCommand::kCancel;
  if (key == VK_DELETE && id == kList) return PickerCommand::kDelete;
  if (key == VK_RETURN) return id == kField ? PickerCommand::kAdd : PickerCommand::kAccept;
  return std::nullopt;
}

void RegisterOnce(WNDPROC procedure) {
  WNDCLASSEXW kind = {};
  kind.cbSize = sizeof kind;
  kind.lpfnWndProc = procedure;
  kind.hInstance = GetModuleHandleW(nullptr);
  kind.hCursor = LoadCursorW(nullptr, IDC_ARROW);
  kind.lpszClassName = kClass;
  RegisterClassExW(&kind);  // fails where it is known already
}

// Over the middle of the owner, on its screen.
RECT CentredPlace(HWND owner, uint32_t dpi) {
  const int width = ScaleFor(dpi, kPickerWidth), height = ScaleFor(dpi, kPickerHeight);
  RECT over = {};
  GetWindowRect(owner, &over);
  MONITORINFO monitor = {};
  monitor.cbSize = sizeof monitor;
  GetMonitorInfoW(MonitorFromWindow(owner, MONITOR_DEFAULTTONEAREST), &monitor);
  const RECT& work = monitor.rcWork;
  const auto within = [](LONG at, LONG size, LONG begin, LONG end) {
    return std::max(std::min(at, end - size), begin);
  };
  const LONG left = within((over.left + over.right - width) / 2, width, work.left, work.right);
  const LONG top = within((over.top + over.bottom - height) / 2, height, work.top, work.bottom);
  return {left, top, left + width, top + height};
}

}  // namespace

void ExtPickerWindow::Open(HWND owner, const ControlHost& main, bool chinese, ExtPicker& picker) {
  if (window_ != nullptr) {
    ReloadPicker(picker, *this);
    SetForegroundWindow(window_);
    return;
  }
  owner_ = owner;
  main_ = &main;
  picker_ = &picker;
  isChinese_ = chinese;
  dpi_ = main.Context().dpi;
  RegisterOnce(Procedure);
  const RECT place = CentredPlace(owner, dpi_);
  const std::u16string title = TranslateOr(u"ContentExt_Title", u"Choose content-search file types");
  window_ = CreateWindowExW(WS_EX_TOOLWINDOW | WS_EX_TOPMOST | WS_EX_CONTROLPARENT, kClass, Wide(title),
                            WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_CLIPCHILDREN, place.left, place.top,
                            place.right - place.left, place.bottom - place.top, owner, nullptr,
                            GetModuleHandleW(nullptr), nullptr);
  if (window_ == nullptr) return;
  SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
  (void)fonts_.Take(MakeFonts(dpi_, isChinese_));
  MakeControls();
  Place();
  WearTheme();
  OpenPicker(picker, *this);
  ShowWindow(window_, SW_SHOW);
  SetForegroundWindow(window_);
  SetFocus(GetDlgItem(window_, kList));
}

void ExtPickerWindow::MakeControls() {
  const auto textOf = [](HWND control, std::u16string_view key, std::u16string_view english) {
    SetWindowTextW(control, Wide(TranslateOr(key, english)));
  };
  const HFONT font = fonts_.Of(FontRole::kMain);
  textOf(MakeControl(window_, {L"STATIC", SS_LEFT | SS_NOPREFIX}, kHint, font), u"ContentExt_Tip",
         u"Check extensions then OK; add/delete custom extensions below.");
  const HWND list = MakeControl(
      window_, {L"SysListView32", WS_TABSTOP | LVS_REPORT | LVS_NOCOLUMNHEADER | LVS_SHOWSELALWAYS},
      kList, font);
  SendMessageW(list, LVM_SETEXTENDEDLISTVIEWSTYLE, 0,
               LVS_EX_CHECKBOXES | LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER);
  LVCOLUMNW column = {};
  column.mask = LVCF_WIDTH;
  SendMessageW(list, LVM_INSERTCOLUMNW, 0, reinterpret_cast<LPARAM>(&column));
  textOf(MakeControl(window_, {L"STATIC", SS_LEFT | SS_NOPREFIX}, kLabel, font), u"ContentExt_Custom",
         u"Custom ext");
  MakeFramedEdit(window_, kField, kLongestField, *this);
  for (const ButtonRow& row : kButtons) {
    textOf(MakeTagButton(window_, row.id, *this), row.key, row.english);
  }
  for (HWND control = GetWindow(window_, GW_CHILD); control != nullptr;
       control = GetWindow(control, GW_HWNDNEXT)) {
    SetWindowSubclass(control, KeyProcedure, kKeys, reinterpret_cast<DWORD_PTR>(this));
  }
}

void ExtPickerWindow::TakeFonts() {
  for (HWND control = GetWindow(window_, GW_CHILD); control != nullptr;
       control = GetWindow(control, GW_HWNDNEXT)) {
    const bool isButton = ButtonOf(GetDlgCtrlID(control)) != nullptr;
    const HFONT font = fonts_.Of(isButton ? FontRole::kFilter : FontRole::kMain);
    SendMessageW(control, WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
  }
}

void ExtPickerWindow::Place() {
  const PickerPlaces places = PlacePicker(FromRECT(ClientRectOf(window_)), dpi_);
  const HWND list = GetDlgItem(window_, kList), field = GetDlgItem(window_, kField);
  MoveControl(GetDlgItem(window_, kHint), places.hint, true);
  MoveControl(list, places.list, true);
  MoveControl(GetDlgItem(window_, kLabel), places.label, true);
  MoveControl(field, places.field, true);
  CentreField(field, dpi_);
  for (const ButtonRow& row : kButtons)
    MoveControl(GetDlgItem(window_, row.id), places.*row.place, true);
  const int bar =
      GetSystemMetrics(SM_CXVSCROLL) * static_cast<int>(dpi_) / static_cast<int>(DpiOfSystem());
  SendMessageW(list, LVM_SETCOLUMNWIDTH, 0, std::max(Width(places.list) - bar - 4, 0));
}

void ExtPickerWindow::WearTheme() {
  if (window_ == nullptr) return;
  const Palette& palette = main_->Context().palette;
  ground_.Reset(CreateSolidBrush(palette.toolbar));
  well_.Reset(CreateSolidBrush(palette.editWell));
  const HWND list = GetDlgItem(window_, kList);
  ThemePopup(list, IsDark());
  SendMessageW(list, LVM_SETBKCOLOR, 0, static_cast<LPARAM>(palette.editWell));
  SendMessageW(list, LVM_SETTEXTBKCOLOR, 0, static_cast<LPARAM>(palette.editWell));
  SendMessageW(list, LVM_SETTEXTCOLOR, 0, static_cast<LPARAM>(palette.text));
  constexpr COLORREF kOfTheSystem = 0xFFFFFFFF;
  ColorFrame(window_,
             palette.isSystem
                 ? FrameColors{.dark = false, .caption = kOfTheSystem, .text = kOfTheSystem}
                 : FrameColors{.dark = IsDark(), .caption = palette.toolbar, .text = palette.text});
  RedrawWindow(window_, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

void ExtPickerWindow::TakeScale(uint32_t dpi, const RECT& place) {
  dpi_ = dpi;
  const FontSet former = fonts_.Take(MakeFonts(dpi_, isChinese_));
  TakeFonts();  // the controls hold the former ones until they have the new
  SetWindowPos(window_, nullptr, place.left, place.top, place.right - place.left,
               place.bottom - place.top, SWP_NOZORDER | SWP_NOACTIVATE);
  Place();
}

void ExtPickerWindow::CloseQuietly() {
  // Forgotten first: what it says while it is destroyed is nobody's business.
  if (const HWND window = std::exchange(window_, nullptr)) {
    SetWindowLongPtrW(window, GWLP_USERDATA, 0);
    DestroyWindow(window);
    fonts_.Release();
  }
}

void ExtPickerWindow::Close() {
  CloseQuietly();
  SetForegroundWindow(owner_);
  SetFocus(GetDlgItem(owner_, kQueryBox));
}

void ExtPickerWindow::ShowRows(const std::vector<PickerRow>& rows) {
  const HWND list = GetDlgItem(window_, kList);
  isFilling_ = true;
  SendMessageW(list, WM_SETREDRAW, FALSE, 0);
  SendMessageW(list, LVM_DELETEALLITEMS, 0, 0);
  for (size_t i = 0; i < rows.size(); ++i) {
    std::u16string text = rows[i].extension;
    LVITEMW item = {};
    item.mask = LVIF_TEXT;
    item.iItem = static_cast<int>(i);
    item.pszText = Wide(text.data());
    SendMessageW(list, LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item));
    item.stateMask = LVIS_STATEIMAGEMASK;
    item.state = INDEXTOSTATEIMAGEMASK(rows[i].isTicked ? 2u : 1u);
    SendMessageW(list, LVM_SETITEMSTATE, i, reinterpret_cast<LPARAM>(&item));
  }
  SendMessageW(list, WM_SETREDRAW, TRUE, 0);
  InvalidateRect(list, nullptr, TRUE);
  isFilling_ = false;
}

std::vector<size_t> ExtPickerWindow::SelectedRows() {
  std::vector<size_t> rows;
  const HWND list = GetDlgItem(window_, kList);
  LRESULT row = -1;
  while ((row = SendMessageW(list, LVM_GETNEXTITEM, static_cast<WPARAM>(row), LVNI_SELECTED)) >= 0) {
    rows.push_back(static_cast<size_t>(row));
  }
  return rows;
}

std::u16string ExtPickerWindow::FieldText() { return TextOfWindow(GetDlgItem(window_, kField)); }

void ExtPickerWindow::EmptyField() {
  SetDlgItemTextW(window_, kField, L"");
  SetFocus(GetDlgItem(window_, kField));
}

void ExtPickerWindow::Tell(const std::u16string& text) {
  MessageBoxW(window_, Wide(text), Wide(TranslateOr(u"App_Name", u"Quilmark")),
              MB_OK | MB_ICONINFORMATION);
}

bool ExtPickerWindow::Ask(const std::u16string& question) {
  return MessageBoxW(window_, Wide(question), Wide(TranslateOr(u"App_Name", u"Quilmark")),
                     MB_YESNO | MB_ICONQUESTION) == IDYES;
}

void ExtPickerWindow::OpenFile(const std::u16string& path) {
  ExecuteVerb(window_, ShellVerb::kOpen, path);
}

ViewContext ExtPickerWindow::Context() const {
  const ViewContext main = main_->Context();
  return {.dpi = dpi_,
          .client = FromRECT(ClientRectOf(window_)),
          .palette = main.palette,
          .fonts = fonts_,
          .window = main.window,
          .hasFocus = GetFocus() == window_,
          .nowMs = TickMs()};
}

void ExtPickerWindow::PaintControl(Canvas& canvas, const ControlPicture& control) const {
  const ButtonRow* const row = ButtonOf(control.id);
  if (row == nullptr) return;
  const HWND button = GetDlgItem(window_, control.id);
  const bool isPressed = (SendMessageW(button, BM_GETSTATE, 0, 0) & BST_PUSHED) != 0;
  PaintButton(canvas, Context(), control.place, TextOfWindow(button),
              {.isPrimary = row->command == PickerCommand::kAccept,
               .isHot = control.isHot,
               .isPressed = isPressed,
               .hasFocus = control.hasFocus});
}

// A key that is held runs its command once: the Enter that opened the window does not accept at once.
bool ExtPickerWindow::TakeKeyOf(HWND control, WPARAM key, bool isRepeat) {
  const auto command = CommandOfKey(key, GetDlgCtrlID(control));
  if (command && !isRepeat) Run(*command);
  return command.has_value();
}

LRESULT CALLBACK ExtPickerWindow::KeyProcedure(HWND control, UINT message, WPARAM wParam, LPARAM lParam,
                                               UINT_PTR, DWORD_PTR reference) {
  if (TakeTabKey(control, message, wParam)) return 0;
  auto& picker = *reinterpret_cast<ExtPickerWindow*>(reference);
  if (message == WM_KEYDOWN && picker.TakeKeyOf(control, wParam, IsRepeat(lParam))) return 0;
  // The list would beep.
  if (message == WM_CHAR && (wParam == VK_RETURN || wParam == VK_ESCAPE || wParam == VK_TAB)) return 0;
  if (message == WM_NCDESTROY) RemoveWindowSubclass(control, KeyProcedure, kKeys);
  return DefSubclassProc(control, message, wParam, lParam);
}

LRESULT CALLBACK ExtPickerWindow::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  auto* const picker = reinterpret_cast<ExtPickerWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  if (picker == nullptr) return DefWindowProcW(window, message, wParam, lParam);
  return picker->OnMessage(window, message, wParam, lParam);
}

LRESULT ExtPickerWindow::OnNotice(const NMHDR& notice) {
  if (notice.code != LVN_ITEMCHANGED || isFilling_) return 0;
  const auto& change = reinterpret_cast<const NMLISTVIEW&>(notice);
  const UINT former = change.uOldState & LVIS_STATEIMAGEMASK,
             now = change.uNewState & LVIS_STATEIMAGEMASK;
  if (change.iItem < 0 || former == now || now == 0) return 0;
  TickRow(*picker_, static_cast<size_t>(change.iItem), now == INDEXTOSTATEIMAGEMASK(2));
  return 0;
}

LRESULT ExtPickerWindow::OnColor(HDC dc, HWND control) {
  const Palette& palette = main_->Context().palette;
  const bool isField = GetDlgCtrlID(control) == kField;
  SetTextColor(dc, palette.text);
  SetBkColor(dc, isField ? palette.editWell : palette.toolbar);
  return reinterpret_cast<LRESULT>(isField ? well_.Get() : ground_.Get());
}

// No dialog manager gives the focus back to the control that had it.
void ExtPickerWindow::OnActivation(bool isActive) {
  if (isActive) return ActivatePicker(*picker_, *this);
  const HWND focus = GetFocus();
  if (IsChild(window_, focus)) focus_ = focus;
}

// The colours of the controls and of the ground. Empty for any other message.
std::optional<LRESULT> ExtPickerWindow::OnPaintMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_DRAWITEM:
      DrawTagButton(*reinterpret_cast<const DRAWITEMSTRUCT*>(lParam), *this);
      return TRUE;
    case WM_CTLCOLORSTATIC:
    case WM_CTLCOLOREDIT:
      return OnColor(reinterpret_cast<HDC>(wParam), reinterpret_cast<HWND>(lParam));
    case WM_ERASEBKGND:
      FillClient(window_, reinterpret_cast<HDC>(wParam), main_->Context().palette.toolbar);
      return 1;
    default:
      return std::nullopt;
  }
}

LRESULT ExtPickerWindow::OnMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (const auto painted = OnPaintMessage(message, wParam, lParam)) return *painted;
  switch (message) {
    case WM_COMMAND:
      if (const ButtonRow* const row = ButtonOf(LOWORD(wParam)); row && HIWORD(wParam) == BN_CLICKED) {
        Run(row->command);
      }
      return 0;
    case WM_NOTIFY:
      return OnNotice(*reinterpret_cast<const NMHDR*>(lParam));
    case WM_ACTIVATE:
      OnActivation(LOWORD(wParam) != WA_INACTIVE);
      break;
    case WM_SETFOCUS:
      SetFocus(IsChild(window_, focus_) ? focus_ : GetDlgItem(window_, kList));
      return 0;
    case WM_DPICHANGED:
      TakeScale(LOWORD(wParam), *reinterpret_cast<const RECT*>(lParam));
      return 0;
    case WM_CLOSE:
      Run(PickerCommand::kCancel);
      return 0;
    case WM_DESTROY:  // with its owner
      SetWindowLongPtrW(window, GWLP_USERDATA, 0);
      window_ = nullptr;
      fonts_.Release();
      break;
    case WM_SYSCOLORCHANGE:
      SendMessageW(GetDlgItem(window, kList), message, wParam, lParam);
      break;
    default:
      break;
  }
  return DefWindowProcW(window, message, wParam, lParam);
}

}  // namespace quilmark
