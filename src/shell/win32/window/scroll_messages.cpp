#include "shell/win32/window/scroll_messages.h"

#include <array>

#include "platform/clock.h"
#include "shell/search/list_scroll.h"
#include "shell/win32/gdi/gdi.h"
#include "shell/win32/system/system_calls.h"

namespace quilmark {

namespace {

// A message carries 16 bits of the position; a bar that is asked has all of them.
int64_t PositionOf(const Message& message) {
  const auto bar = reinterpret_cast<HWND>(message.lParam);
  const int64_t position = HIWORD(message.wParam);
  SCROLLINFO info = {};
  info.cbSize = sizeof info;
  info.fMask = SIF_TRACKPOS;
  if (bar == nullptr || !GetScrollInfo(bar, SB_CTL, &info)) return position;
  return LOWORD(info.nTrackPos) == position ? info.nTrackPos : position;
}

ScrollCommand CommandOf(const Message& message) {
  return static_cast<ScrollCommand>(LOWORD(message.wParam));
}

bool IsOfBar(const Message& message, HWND bar) {
  return message.lParam == 0 || reinterpret_cast<HWND>(message.lParam) == bar;
}

Point InClient(HWND window, POINTS screen) {
  POINT point = {screen.x, screen.y};
  ScreenToClient(window, &point);
  return {point.x, point.y};
}

}  // namespace

std::optional<LRESULT> OnHorizontalScroll(AppState& app, MainWindow& window, const Message& message) {
  if (!IsOfBar(message, window.horizontalBar)) return std::nullopt;
  window.tip.Hide();
  ScrollColumns(app, window, window.List(), CommandOf(message), PositionOf(message), TickMs());
  return 0;
}

std::optional<LRESULT> OnVerticalScroll(AppState& app, MainWindow& window, const Message& message) {
  if (!IsOfBar(message, window.verticalBar)) return std::nullopt;
  window.tip.Hide();
  ScrollRows(app, window, window.List(), CommandOf(message), PositionOf(message), TickMs());
  return 0;
}

std::optional<LRESULT> OnGestureNotify(AppState&, MainWindow& window, const Message& message) {
  using Configure = BOOL(WINAPI*)(HWND, DWORD, UINT, PGESTURECONFIG, UINT);
  static const auto configure = SystemCall<Configure>(L"user32.dll", "SetGestureConfig");
  const auto* const notice = reinterpret_cast<const GESTURENOTIFYSTRUCT*>(message.lParam);
  if (configure == nullptr || notice == nullptr) return std::nullopt;
  const bool isOverRows = Holds(window.List().rows, InClient(message.window, notice->ptsLocation));
  constexpr DWORD kPan = GC_PAN | GC_PAN_WITH_SINGLE_FINGER_VERTICALLY |
                         GC_PAN_WITH_SINGLE_FINGER_HORIZONTALLY | GC_PAN_WITH_INERTIA;
  GESTURECONFIG config = {};
  config.dwID = GID_PAN;
  config.dwWant = isOverRows ? kPan : DWORD{0};
  config.dwBlock = isOverRows ? DWORD{GC_PAN_WITH_GUTTER} : DWORD{GC_PAN};
  configure(message.window, 0, 1, &config, sizeof config);
  return std::nullopt;
}

std::optional<LRESULT> OnGesture(AppState& app, MainWindow& window, const Message& message) {
  using Read = BOOL(WINAPI*)(HGESTUREINFO, PGESTUREINFO);
  using Close = BOOL(WINAPI*)(HGESTUREINFO);
  static const auto read = SystemCall<Read>(L"user32.dll", "GetGestureInfo");
  static const auto close = SystemCall<Close>(L"user32.dll", "CloseGestureInfoHandle");
  const auto gesture = reinterpret_cast<HGESTUREINFO>(message.lParam);
  GESTUREINFO info = {};
  info.cbSize = sizeof info;
  const bool isPan = read != nullptr && close != nullptr && read(gesture, &info) && info.dwID == GID_PAN;
  if (!isPan) return std::nullopt;  // the system closes what it is handed
  const Point finger = InClient(message.window, info.ptsLocation);
  if ((info.dwFlags & GF_BEGIN) != 0) BeginPan(app, finger);
  window.tip.Hide();
  PanTo(app, window, window.List(), finger, TickMs());
  close(gesture);
  return 0;
}

}  // namespace quilmark
