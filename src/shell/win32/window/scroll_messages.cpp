#include "shell/win32/window/scroll_messages.h"

#include <array>

#include "platform/win32/system_function.h"
#include "platform/win32/unique.h"
#include "shell/view/window_ids.h"
#include "shell/win32/gdi/gdi.h"

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

bool IsOfBar(const Message& message, int bar) {
  const auto control = reinterpret_cast<HWND>(message.lParam);
  return control == nullptr || control == GetDlgItem(message.window, bar);
}

Point InClient(HWND window, POINTS screen) {
  POINT point = {screen.x, screen.y};
  ScreenToClient(window, &point);
  return {point.x, point.y};
}

// CloseGestureInfoHandle, where the system has it.
auto CloseGesture() {
  using Close = BOOL(WINAPI*)(HGESTUREINFO);
  static const auto close = SystemCall<Close>(L"user32.dll", "CloseGestureInfoHandle");
  return close;
}

// REQUIRES CloseGesture() != nullptr for one that is not empty
struct GestureTraits {
  using Value = HGESTUREINFO;
  static Value Empty() { return nullptr; }
  static void Close(Value gesture) { CloseGesture()(gesture); }
};
using UniqueGesture = Unique<GestureTraits>;

}  // namespace

std::optional<LRESULT> OnBarScroll(AppState& app, MainWindow& window, const Message& message) {
  const bool isVertical = message.number == WM_VSCROLL;
  if (!IsOfBar(message, isVertical ? kVerticalBar : kHorizontalBar)) return std::nullopt;
  const ScrollEvent event = {isVertical, CommandOf(message), PositionOf(message)};
  window.CarryOut(ShownView(app).OnScroll(event, window.Context()));
  return 0;
}

std::optional<LRESULT> OnGestureNotify(AppState& app, MainWindow& window, const Message& message) {
  using Configure = BOOL(WINAPI*)(HWND, DWORD, UINT, PGESTURECONFIG, UINT);
  static const auto configure = SystemCall<Configure>(L"user32.dll", "SetGestureConfig");
  const auto* const notice = reinterpret_cast<const GESTURENOTIFYSTRUCT*>(message.lParam);
  if (configure == nullptr || notice == nullptr) return std::nullopt;
  const bool isOverRows =
      ShownView(app).CanPan(InClient(message.window, notice->ptsLocation), window.Context());
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
  static const auto read = SystemCall<Read>(L"user32.dll", "GetGestureInfo");
  const auto handed = reinterpret_cast<HGESTUREINFO>(message.lParam);
  GESTUREINFO info = {};
  info.cbSize = sizeof info;
  const bool isPan =
      read != nullptr && CloseGesture() != nullptr && read(handed, &info) && info.dwID == GID_PAN;
  if (!isPan) return std::nullopt;  // the system closes what it is handed
  const UniqueGesture gesture(handed);
  const Point finger = InClient(message.window, info.ptsLocation);
  window.CarryOut(ShownView(app).OnPan({finger, (info.dwFlags & GF_BEGIN) != 0}, window.Context()));
  return 0;
}

}  // namespace quilmark
