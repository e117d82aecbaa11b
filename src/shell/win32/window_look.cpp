#include "shell/win32/window_look.h"

#include "config/palette.h"
#include "shell/layout.h"

namespace quilmark {

namespace {

struct FontRow {
  UniqueFont WindowFonts::*font;
  int height;  // pixels at 96 dpi
  int weight;
};
constexpr FontRow kFontRows[] = {
    {&WindowFonts::main, 12, 500},  {&WindowFonts::list, 13, 500},   {&WindowFonts::header, 12, 600},
    {&WindowFonts::title, 17, 400}, {&WindowFonts::filter, 12, 600}, {&WindowFonts::small, 10, 400},
};

}  // namespace

WindowFonts MakeFonts(uint32_t dpi, bool chinese) {
  WindowFonts fonts;
  for (const FontRow& row : kFontRows) {
    // A negative height is that of the letters, without the space between lines.
    (fonts.*row.font)
        .Reset(CreateFontW(-ScaleFor(dpi, row.height), 0, 0, 0, row.weight, FALSE, FALSE, FALSE,
                           DEFAULT_CHARSET, OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS, CLEARTYPE_QUALITY,
                           DEFAULT_PITCH | FF_DONTCARE, chinese ? L"Microsoft YaHei UI" : L"Segoe UI"));
  }
  return fonts;
}

WindowBrushes MakeBrushes() {
  WindowBrushes brushes;
  brushes.well.Reset(CreateSolidBrush(CurrentPalette.editWell));
  return brushes;
}

}  // namespace quilmark
