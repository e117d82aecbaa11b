#include "shell/win32/controls/control_window.h"

#include <commctrl.h>

#include <array>
#include <utility>

#include "platform/win32/wide.h"
#include "shell/win32/controls/window_text.h"

namespace quilmark {

namespace {

constexpr wchar_t kClass[] = L"QUILMARK_CONTROL_TEST";

void RegisterOnce(WNDPROC procedure) {
  static const bool isDone = [procedure] {
    INITCOMMONCONTROLSEX classes = {};
    classes.dwSize = sizeof classes;
    classes.dwICC = ICC_DATE_CLASSES;
    InitCommonControlsEx(&classes);
    WNDCLASSEXW windowClass = {};
    windowClass.cbSize = sizeof windowClass;
    windowClass.lpfnWndProc = procedure;
    windowClass.hInstance = GetModuleHandleW(nullptr);
    windowClass.lpszClassName = kClass;
    return RegisterClassExW(&windowClass) != 0;
  }();
  static_cast<void>(isDone);
}

}  // namespace

ControlWindow::ControlWindow(uint32_t dpi) : dpi_(dpi) {
  const FontSet none = fonts_.Take(MakeFonts(dpi, false));
  RegisterOnce(Procedure);
  window_ = CreateWindowExW(0, kClass, L"controls", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, 40, 40, 900,
                            600, nullptr, nullptr, GetModuleHandleW(nullptr), this);
  ShowWindow(window_, SW_SHOW);
  SetForegroundWindow(window_);
  SetFocus(window_);
  DispatchAll();
}

ControlWindow::~ControlWindow() {
  DestroyWindow(window_);
  DispatchAll();
}

LRESULT CALLBACK ControlWindow::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_NCCREATE) {
    const auto* const creation = reinterpret_cast<const CREATESTRUCTW*>(lParam);
    SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(creation->lpCreateParams));
  }
  auto* const self = reinterpret_cast<ControlWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  if (self != nullptr) {
    if (const auto taken = self->controls.TakeMessage(message, wParam, lParam)) return *taken;
  }
  return DefWindowProcW(window, message, wParam, lParam);
}

ViewContext ControlWindow::Context() const {
  RECT client = {};
  GetClientRect(window_, &client);
  return {.dpi = dpi_,
          .client = FromRECT(client),
          .palette = palette_,
          .fonts = fonts_,
          .window = asked_,
          .hasFocus = GetFocus() == window_};
}

bool ControlWindow::OnControl(const ControlEvent& event) {
  events_.push_back(event);
  return answer ? answer(event) : true;
}

void ControlWindow::PaintControl(Canvas& canvas, const ControlPicture& control) const {
  canvas.Fill(control.place, palette_.accent);
  pictures_.push_back(control);
}

void ControlWindow::TakeScale(uint32_t dpi) {
  dpi_ = dpi;
  const FontSet former = fonts_.Take(MakeFonts(dpi, false));
  controls.TakeFonts();
}

std::vector<ControlEvent> ControlWindow::TakeEvents() { return std::exchange(events_, {}); }

std::vector<ControlPicture> ControlWindow::TakePictures() { return std::exchange(pictures_, {}); }

void DispatchAll() {
  MSG message = {};
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
}

void Press(HWND control, WPARAM key) {
  SendMessageW(control, WM_KEYDOWN, key, 1);
  SendMessageW(control, WM_KEYUP, key, 1);
}

void Type(HWND control, std::u16string_view text) {
  for (const char16_t unit : text) SendMessageW(control, WM_CHAR, unit, 1);
}

std::u16string TextOf(HWND control) { return TextOfWindow(control); }

std::u16string ClassOf(HWND control) {
  std::array<wchar_t, 64> name = {};
  GetClassNameW(control, name.data(), static_cast<int>(name.size()));
  return FromWide(name.data());
}

bool IsVisibleStyle(HWND control) { return (GetWindowLongPtrW(control, GWL_STYLE) & WS_VISIBLE) != 0; }

void HeldShift::Set(BYTE state) {
  std::array<BYTE, 256> keys = {};
  GetKeyboardState(keys.data());
  keys[VK_SHIFT] = state;
  SetKeyboardState(keys.data());
}

}  // namespace quilmark
