#include "shell/win32/window/window_paint.h"

#include "platform/clock.h"
#include "shell/app/window_timers.h"
#include "shell/search/result_messages.h"
#include "shell/search/search_paint.h"
#include "shell/win32/gdi/gdi_canvas.h"

namespace quilmark {

PaintOutcome PaintWindow(HDC dc, const MainWindow& window, const Rect& place) {
  const ViewContext context = window.Context();
  GdiCanvas canvas(dc, CurrentFonts(), context.client);
  const CanvasClip clip(canvas, place);
  return PaintSearch(canvas, context, App());
}

void MainWindow::Paint() {
  constexpr uint32_t kLaterMs = 100;
  PAINTSTRUCT paint;
  const HDC screen = BeginPaint(window_, &paint);
  ++paints;
  PaintOutcome outcome;
  if (backBuffer.IsReady()) {
    const RECT& place = paint.rcPaint;
    outcome = PaintWindow(backBuffer.Dc(), *this, FromRECT(place));
    NotePaint(App(), FromRECT(place), outcome, TickMs());
    paintedScrollY = App().scrollY;
    BitBlt(screen, place.left, place.top, place.right - place.left, place.bottom - place.top,
           backBuffer.Dc(), place.left, place.top, SRCCOPY);
  }
  EndPaint(window_, &paint);
  if (outcome.isLater) RequestListRepaint(App(), *this, kLaterMs, TickMs());
  // While the list moves nothing touches the disk; the settle timer comes back to it.
  if (outcome.isMissing && !IsScrolling(App(), TickMs())) {
    RunFeature(App().features.requestAttributes);
  }
}

}  // namespace quilmark
