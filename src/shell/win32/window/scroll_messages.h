// Messages that scroll the list without a wheel.
#pragma once

#include "shell/win32/window/main_window.h"

namespace quilmark {

// WM_HSCROLL and WM_VSCROLL of the hidden bars that hold the list's state, or of no control. Empty for
// any other bar.
std::optional<LRESULT> OnBarScroll(AppState& app, MainWindow& window, const Message& message);

// WM_GESTURENOTIFY. Where the view can pan, a finger pans; elsewhere it acts as a mouse, so that thumbs
// can be dragged.
std::optional<LRESULT> OnGestureNotify(AppState& app, MainWindow& window, const Message& message);

// WM_GESTURE. Hands a pan to the shown view; empty for any other gesture.
std::optional<LRESULT> OnGesture(AppState& app, MainWindow& window, const Message& message);

}  // namespace quilmark
