#include <windows.h>

#include <commctrl.h>
#include <windowsx.h>

#include "config/log.h"
#include "config/palette.h"
#include "platform/clock.h"
#include "shell/app/frame_drag.h"
#include "shell/app/routing.h"
#include "shell/app/system_port.h"
#include "shell/app/tray_menu.h"
#include "shell/app/window_events.h"
#include "shell/view/window_ids.h"
#include "shell/win32/controls/edit_keys.h"
#include "shell/win32/system/foreground_file.h"
#include "shell/win32/system/system_calls.h"
#include "shell/win32/system/tray_menu.h"
#include "shell/win32/window/main_window.h"
#include "shell/win32/window/scroll_messages.h"
#include "shell/win32/window/system_messages.h"

namespace quilmark {

MessageHandler extraMessages = nullptr;

namespace {

using Outcome = std::optional<LRESULT>;

Outcome OnCreate(AppState& app, MainWindow& window, const Message& message) {
  CreateWindowParts(app, window, message.window);
  return 0;
}

Outcome OnDestroy(AppState& app, MainWindow& window, const Message&) {
  EndWindow(app, window, window);
  return 0;
}

Outcome OnSize(AppState& app, MainWindow& window, const Message& message) {
  const int width = LOWORD(message.lParam), height = HIWORD(message.lParam);
  const Effects effects = OnResized(app, window.Context(), width, height);
  window.backBuffer.Resize(window.Handle(), width, height);
  window.CarryOut(effects);
  if (effects.relayout && message.wParam != SIZE_MINIMIZED) SaveWindowSize(app, window);
  return 0;
}

Outcome OnEnterSizeMove(AppState& app, MainWindow&, const Message&) {
  OnFrameHeld(app);
  return std::nullopt;
}

Outcome OnExitSizeMove(AppState& app, MainWindow& window, const Message&) {
  OnFrameReleased(app, window);
  return std::nullopt;
}

Outcome OnActivate(AppState& app, MainWindow& window, const Message& message) {
  const bool isActive = LOWORD(message.wParam) != WA_INACTIVE;
  const Effects effects =
      OnActivation(app, window.Context(), isActive ? Activation::kActivated : Activation::kDeactivated);
  window.CarryOut(effects);
  return effects.isTaken ? Outcome(0) : std::nullopt;
}

Outcome OnPaint(AppState&, MainWindow& window, const Message&) {
  window.Paint();
  return 0;
}

Outcome OnEraseBackground(AppState&, MainWindow&, const Message&) { return 1; }

Outcome OnClose(AppState& app, MainWindow& window, const Message&) {
  CloseWindowRequest(app, window.Context());
  return 0;
}

Outcome OnDisplayChange(AppState&, MainWindow& window, const Message& message) {
  window.RecreateBackBuffer();
  InvalidateRect(message.window, nullptr, TRUE);
  return 0;
}

// Leaves the message to the system afterwards, as its own controls need it too.
Outcome OnSystemColors(AppState&, MainWindow& window, const Message&) {
  FollowSystemColors(window);
  return std::nullopt;
}

Outcome OnControlMessage(AppState&, MainWindow& window, const Message& message) {
  return window.controls.TakeMessage(message.number, message.wParam, message.lParam);
}

Outcome OnSysCommand(AppState& app, MainWindow& window, const Message& message) {
  constexpr WPARAM kCommandBits = 0xFFF0;  // the system uses the others
  const WPARAM command = message.wParam & kCommandBits;
  if (command == SC_MINIMIZE) {
    TrimAndHide(window);
    return 0;
  }
  if (command == SC_CLOSE) app.closeBoxPressed = true;
  return std::nullopt;
}

Outcome OnTimer(AppState& app, MainWindow& window, const Message& message) {
  const Effects effects = RouteTimer(app, window.Context(), static_cast<uint32_t>(message.wParam));
  window.CarryOut(effects);
  return effects.isTaken ? Outcome(0) : std::nullopt;
}

Outcome OnControlColor(AppState&, MainWindow& window, const Message& message) {
  const HDC dc = reinterpret_cast<HDC>(message.wParam);
  SetTextColor(dc, CurrentPalette.text);
  SetBkColor(dc, CurrentPalette.editWell);
  const HBRUSH brush = window.well.Get();
  return reinterpret_cast<LRESULT>(brush != nullptr ? brush : GetStockObject(BLACK_BRUSH));
}

Outcome OnScrollbarColor(AppState&, MainWindow& window, const Message& message) {
  UniqueBrush& track = window.scrollTrack;
  if (!track) track.Reset(CreateSolidBrush(CurrentPalette.controlBackground));
  SetBkColor(reinterpret_cast<HDC>(message.wParam), CurrentPalette.controlBackground);
  return reinterpret_cast<LRESULT>(track.Get());
}

Point PointOf(const Message& message) {
  return {GET_X_LPARAM(message.lParam), GET_Y_LPARAM(message.lParam)};
}

Outcome OnMouse(AppState& app, MainWindow& window, const MouseEvent& event) {
  window.CarryOut(ShownView(app).OnMouse(event, window.Context()));
  return 0;
}

// For a message whose wParam says which keys are held.
MouseEvent EventOf(Mouse kind, Point at, WORD keys, int delta = 0) {
  return {.kind = kind,
          .at = at,
          .delta = delta,
          .shift = (keys & MK_SHIFT) != 0,
          .ctrl = (keys & MK_CONTROL) != 0,
          .isHeld = (keys & MK_LBUTTON) != 0};
}

template <Mouse kind>
Outcome OnClientMouse(AppState& app, MainWindow& window, const Message& message) {
  return OnMouse(app, window, EventOf(kind, PointOf(message), LOWORD(message.wParam)));
}

template <Mouse kind>
Outcome OnTurn(AppState& app, MainWindow& window, const Message& message) {
  POINT cursor = {GET_X_LPARAM(message.lParam), GET_Y_LPARAM(message.lParam)};
  ScreenToClient(message.window, &cursor);
  return OnMouse(app, window,
                 EventOf(kind, {cursor.x, cursor.y}, GET_KEYSTATE_WPARAM(message.wParam),
                         GET_WHEEL_DELTA_WPARAM(message.wParam)));
}

Outcome OnMouseLeave(AppState& app, MainWindow& window, const Message&) {
  return OnMouse(app, window, {.kind = Mouse::kLeave});
}

Outcome OnCaptureChanged(AppState& app, MainWindow& window, const Message&) {
  OnMouse(app, window, {.kind = Mouse::kLost});
  return std::nullopt;
}

Outcome OnSetCursor(AppState& app, MainWindow& window, const Message& message) {
  if (LOWORD(message.lParam) != HTCLIENT || reinterpret_cast<HWND>(message.wParam) != message.window) {
    return std::nullopt;
  }
  POINT cursor = {};
  GetCursorPos(&cursor);
  ScreenToClient(message.window, &cursor);
  if (!ShownView(app).HasSizeCursor({cursor.x, cursor.y}, window.Context())) return std::nullopt;
  SetCursor(LoadCursorW(nullptr, IDC_SIZEWE));
  return TRUE;
}

// Repaints the list: the row that has the focus shows it only while the list gets the keys.
Outcome OnFocus(AppState& app, MainWindow& window, const Message&) {
  window.Invalidate(ShownView(app).ListArea(window.Context()));
  return std::nullopt;
}

Outcome OnKeyDown(AppState& app, MainWindow& window, const Message& message) {
  const auto key = static_cast<uint32_t>(message.wParam);
  const bool isRepeat = IsRepeat(message.lParam);
  if (window.TakeKey(key, isRepeat)) return 0;
  const KeyEvent event = {.key = key, .ctrl = GetKeyState(VK_CONTROL) < 0, .isRepeat = isRepeat};
  const Effects effects = ShownView(app).OnKey(event, window.Context());
  window.CarryOut(effects);
  return effects.isTaken ? Outcome(0) : std::nullopt;
}

Outcome OnPower(AppState&, MainWindow& window, const Message& message) {
  if (message.wParam != PBT_APMRESUMEAUTOMATIC && message.wParam != PBT_APMRESUMESUSPEND) {
    return std::nullopt;
  }
  LogGdiState(u"WM_POWERBROADCAST resume");
  window.RecreateBackBuffer();
  window.AddOrUpdateTrayIcon();
  InvalidateRect(message.window, nullptr, TRUE);
  UpdateWindow(message.window);
  return 1;
}

Outcome OnDpiChanged(AppState& app, MainWindow& window, const Message& message) {
  uint32_t dpi = LOWORD(message.wParam);
  if (dpi == 0) dpi = DpiOfWindow(message.window);
  if (TakeScaleChange(app, dpi)) {
    window.RemakeFonts();
    window.RemakeIcons();
    window.Relayout();
  }
  if (message.lParam != 0) {
    const auto& rect = *reinterpret_cast<const RECT*>(message.lParam);
    SetWindowPos(message.window, nullptr, rect.left, rect.top, rect.right - rect.left,
                 rect.bottom - rect.top, SWP_NOZORDER | SWP_NOACTIVATE);
  }
  InvalidateRect(message.window, nullptr, FALSE);  // no WM_SIZE follows where the size stays
  // This comes last: it waits for the shell, and other messages come in meanwhile.
  if (app.trayIconAdded) window.AddOrUpdateTrayIcon();
  return 0;
}

Outcome OnHotkey(AppState& app, MainWindow& window, const Message& message) {
  if (message.wParam == static_cast<WPARAM>(kHotkeyShow)) {
    ToggleWindow(app, window);
    return 0;
  }
  if (message.wParam == static_cast<WPARAM>(kHotkeyForeground)) {
    ShowForegroundFile(message.window);
    return 0;
  }
  return std::nullopt;
}

Outcome OnTray(AppState& app, MainWindow& window, const Message& message) {
  if (message.lParam == WM_LBUTTONDBLCLK) ShowAsAsked(app, window);
  if (message.lParam == WM_RBUTTONUP) {
    const auto rows = TrayMenuRows(IsAutostartEnabled(*app.system));
    const uint16_t choice = ChooseFromTrayMenu(message.window, rows);
    window.CarryOut(OnTrayChoice(app, window.Context(), choice));
  }
  return 0;
}

struct MessageRow {
  UINT number;
  MessageHandler handle;
};
constexpr MessageRow kMessageRows[] = {
    {WM_CREATE, OnCreate},
    {WM_DESTROY, OnDestroy},
    {WM_SIZE, OnSize},
    {WM_ENTERSIZEMOVE, OnEnterSizeMove},
    {WM_EXITSIZEMOVE, OnExitSizeMove},
    {WM_ACTIVATE, OnActivate},
    {WM_PAINT, OnPaint},
    {WM_CLOSE, OnClose},
    {WM_ERASEBKGND, OnEraseBackground},
    {WM_DRAWITEM, OnControlMessage},
    {WM_MEASUREITEM, OnControlMessage},
    {WM_DISPLAYCHANGE, OnDisplayChange},
    {WM_SYSCOLORCHANGE, OnSystemColors},
    {WM_SETTINGCHANGE, OnSystemColors},
    {WM_THEMECHANGED, OnSystemColors},
    {WM_COMMAND, OnControlMessage},
    {WM_NOTIFY, OnControlMessage},
    {WM_SYSCOMMAND, OnSysCommand},
    {WM_TIMER, OnTimer},
    {WM_CTLCOLOREDIT, OnControlColor},
    {WM_CTLCOLORLISTBOX, OnControlColor},
    {WM_CTLCOLORSTATIC, OnControlColor},
    {WM_CTLCOLORSCROLLBAR, OnScrollbarColor},
    {WM_SETCURSOR, OnSetCursor},
    {WM_SETFOCUS, OnFocus},
    {WM_KILLFOCUS, OnFocus},
    {WM_KEYDOWN, OnKeyDown},
    {WM_SYSKEYDOWN, OnKeyDown},
    {WM_MOUSEMOVE, OnClientMouse<Mouse::kMove>},
    {WM_LBUTTONDOWN, OnClientMouse<Mouse::kPress>},
    {WM_LBUTTONUP, OnClientMouse<Mouse::kRelease>},
    {WM_LBUTTONDBLCLK, OnClientMouse<Mouse::kDouble>},
    {WM_RBUTTONUP, OnClientMouse<Mouse::kRight>},
    {WM_CAPTURECHANGED, OnCaptureChanged},
    {WM_MOUSEWHEEL, OnTurn<Mouse::kWheel>},
    {WM_MOUSEHWHEEL, OnTurn<Mouse::kTilt>},
    {WM_VSCROLL, OnBarScroll},
    {WM_HSCROLL, OnBarScroll},
    {WM_GESTURENOTIFY, OnGestureNotify},
    {WM_GESTURE, OnGesture},
    {WM_MOUSEHOVER, OnClientMouse<Mouse::kRest>},
    {WM_MOUSELEAVE, OnMouseLeave},
    {WM_POWERBROADCAST, OnPower},
    {WM_DEVICECHANGE, OnDeviceChange},
    {WM_ENDSESSION, OnSessionEnd},
    {WM_DPICHANGED, OnDpiChanged},
    {WM_HOTKEY, OnHotkey},
    {kTrayCallback, OnTray},
};

// Answers the messages that other programs send. False for any other.
bool TakeForeignMessage(AppState& app, MainWindow& window, UINT number) {
  if (number == 0) return false;
  if (number == window.foreign.taskbarCreated) {
    OnTaskbarCreated(app, window, TickMs());
    return true;
  }
  if (number != window.foreign.show) return false;
  ShowAsAsked(app, window);
  return true;
}

Outcome Handle(AppState& app, MainWindow& window, const Message& message) {
  for (const MessageRow& row : kMessageRows) {
    if (row.number == message.number) return row.handle(app, window, message);
  }
  if (TakeForeignMessage(app, window, message.number)) return 0;
  if (RowOfNumber(app.messageNumbers, message.number) != nullptr) {
    const Effects effects =
        RoutePosted(app, window.Context(), {message.number, message.wParam, message.lParam});
    window.CarryOut(effects);
    if (effects.isTaken) return 0;
  }
  return extraMessages != nullptr ? extraMessages(app, window, message) : std::nullopt;
}

LRESULT CALLBACK WndProc(HWND handle, UINT number, WPARAM wParam, LPARAM lParam) {
  const auto outcome = Handle(App(), TheWindow(), {handle, number, wParam, lParam});
  return outcome ? *outcome : DefWindowProcW(handle, number, wParam, lParam);
}

HICON ClassIcon(HINSTANCE instance) {
  const auto icon = static_cast<HICON>(
      LoadImageW(instance, MAKEINTRESOURCEW(kAppIcon), IMAGE_ICON, 32, 32, LR_DEFAULTCOLOR));
  return icon != nullptr ? icon : LoadIconW(nullptr, IDI_APPLICATION);
}

}  // namespace

void RegisterMainWindowClass(MainWindow& window, HINSTANCE instance) {
  window.classBrush.Reset(CreateSolidBrush(CurrentPalette.surface));
  WNDCLASSEXW windowClass = {};
  windowClass.cbSize = sizeof windowClass;
  windowClass.style = CS_DBLCLKS;
  windowClass.lpfnWndProc = WndProc;
  windowClass.hInstance = instance;
  windowClass.hIcon = ClassIcon(instance);
  windowClass.hCursor = LoadCursorW(nullptr, IDC_ARROW);
  windowClass.hbrBackground = window.classBrush.Get();
  windowClass.lpszClassName = kMainWindowClass;
  RegisterClassExW(&windowClass);
}

HWND OpenMainWindow(HINSTANCE instance, const RECT& rect, const wchar_t* title) {
  return CreateWindowExW(
      WS_EX_COMPOSITED, kMainWindowClass, title, WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, rect.left,
      rect.top, rect.right - rect.left, rect.bottom - rect.top, nullptr, nullptr, instance, nullptr);
}

}  // namespace quilmark
