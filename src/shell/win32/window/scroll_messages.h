// Messages that scroll the list without a wheel.
#pragma once

#include "shell/win32/window/main_window.h"

namespace quilmark {

// WM_HSCROLL and WM_VSCROLL: of the bars that store the list's state, or of no control.
std::optional<LRESULT> OnBarScroll(AppState& app, MainWindow& window, const Message& message);

// WM_GESTURENOTIFY: over the rows a finger pans; elsewhere it is a mouse, so that thumbs can be dragged.
std::optional<LRESULT> OnGestureNotify(AppState& app, MainWindow& window, const Message& message);

// WM_GESTURE.
std::optional<LRESULT> OnGesture(AppState& app, MainWindow& window, const Message& message);

}  // namespace quilmark
