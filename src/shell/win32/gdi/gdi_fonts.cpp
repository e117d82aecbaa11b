#include "shell/win32/gdi/gdi_fonts.h"

#include <algorithm>
#include <utility>

#include "canvas/scale.h"
#include "platform/win32/wide.h"
#include "shell/win32/gdi/mixed_line.h"

namespace quilmark {

FontSet MakeFonts(uint32_t dpi, bool chinese) {
  FontSet fonts;
  for (size_t i = 0; i < kFontRoles; ++i) {
    // A negative height is that of the letters, without the space between lines.
    fonts[i].Reset(CreateFontW(-ScaleFor(dpi, kFontRows[i].height), 0, 0, 0, kFontRows[i].weight, FALSE,
                               FALSE, FALSE, DEFAULT_CHARSET, OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS,
                               CLEARTYPE_QUALITY, DEFAULT_PITCH | FF_DONTCARE,
                               chinese ? L"Microsoft YaHei UI" : L"Segoe UI"));
  }
  return fonts;
}

GdiFonts& CurrentFonts() {
  static GdiFonts fonts;
  return fonts;
}

// The system deletes no font that is selected.
void GdiFonts::Deselect() {
  if (std::exchange(selected_, std::nullopt)) SelectObject(dc_.Get(), GetStockObject(SYSTEM_FONT));
}

FontSet GdiFonts::Take(FontSet fonts) {
  Deselect();
  ++version_;
  return std::exchange(fonts_, std::move(fonts));
}

void GdiFonts::Release() {
  const FontSet former = Take({});
  dc_.Reset();
}

HDC GdiFonts::Dc(FontRole font) const {
  if (!dc_) dc_.Reset(CreateCompatibleDC(nullptr));
  if (selected_ != font && SelectObject(dc_.Get(), Of(font)) != nullptr) selected_ = font;
  return dc_.Get();
}

int GdiFonts::WidthOf(FontRole font, std::u16string_view text) const {
  if (RunsRightToLeft(text)) {
    const MixedLine line(Dc(font), std::u16string(text));
    if (line.IsReady()) return line.Width();
  }
  SIZE size = {};
  GetTextExtentPoint32W(Dc(font), Wide(text.data()), static_cast<int>(text.size()), &size);
  return size.cx;
}

int GdiFonts::LineHeight(FontRole font) const {
  TEXTMETRICW metrics = {};
  GetTextMetricsW(Dc(font), &metrics);
  return std::max<int>(metrics.tmHeight, 1);
}

size_t GdiFonts::UnitsWithin(FontRole font, std::u16string_view text, int width) const {
  int fitting = 0;
  SIZE size = {};
  GetTextExtentExPointW(Dc(font), Wide(text.data()), static_cast<int>(text.size()), width, &fitting,
                        nullptr, &size);
  return static_cast<size_t>(std::max(fitting, 0));
}

}  // namespace quilmark
