#include "shell/win32/window/window_paint.h"

#include "shell/app/routing.h"
#include "shell/win32/gdi/gdi_canvas.h"

namespace quilmark {

PaintOutcome PaintWindow(HDC dc, const MainWindow& window, const Rect& place) {
  const ViewContext context = window.Context();
  GdiCanvas canvas(dc, CurrentFonts(), context.client);
  const CanvasClip clip(canvas, place);
  return ShownView(App()).Paint(canvas, context);
}

void MainWindow::Paint() {
  ++paints;
  Rect place;
  PaintOutcome outcome;
  {
    const PaintScope paint(window_);
    place = FromRECT(paint.Place());
    if (backBuffer.IsReady()) {
      outcome = PaintWindow(backBuffer.Dc(), *this, place);
      BitBlt(paint.Dc(), place.left, place.top, Width(place), Height(place), backBuffer.Dc(), place.left,
             place.top, SRCCOPY);
    }
  }
  if (backBuffer.IsReady()) CarryOut(NotePaint(App(), Context(), place, outcome));
}

}  // namespace quilmark
