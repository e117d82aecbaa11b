#include "shell/view/button.h"

#include <algorithm>

#include "config/contrast.h"

namespace quilmark {

namespace {

constexpr int kInset = 6, kRadius = 8;  // pixels at 96 dpi
constexpr int kPrimaryPercent = 12;     // of the accent in a primary button's ground

Color GroundOf(const Palette& palette, const ButtonLook& look) {
  if (!look.isEnabled) return palette.toolbar;
  if (look.isPressed) return palette.accent;
  if (look.isHot) return palette.accentSoft;
  if (!look.isPrimary || palette.isSystem) return palette.controlBackground;
  return MixColor(palette.accent, palette.surface, kPrimaryPercent);
}

Color LettersOf(const Palette& palette, const ButtonLook& look, Color ground) {
  if (palette.isSystem) {
    if (!look.isEnabled) return palette.muted;
    return look.isPressed ? palette.accentText : palette.text;
  }
  if (!look.isEnabled) return ReadableOn(ground, palette.muted);
  return ReadableOn(ground, look.isPressed ? palette.accentText : palette.text);
}

}  // namespace

void PaintButton(Canvas& canvas, const ViewContext& context, const Rect& place,
                 std::u16string_view caption, const ButtonLook& look) {
  const Palette& palette = context.palette;
  const Color ground = GroundOf(palette, look);
  const int radius = context.Scaled(kRadius), inset = context.Scaled(kInset);
  canvas.FillRound(place, radius, ground);
  const int room = std::max(Width(place) - 2 * inset, 0);
  const int width = std::min(context.fonts.WidthOf(FontRole::kFilter, caption), room);
  const int left = place.left + (Width(place) - width) / 2;
  canvas.Text({left, place.top, left + width + 1, place.bottom}, caption,
              {.font = FontRole::kFilter, .color = LettersOf(palette, look, ground)});
  canvas.OutlineRound(place, radius, look.hasFocus ? palette.focusRing : palette.border);
}

}  // namespace quilmark
