#include "shell/view/tag.h"

#include <algorithm>

#include "config/contrast.h"

namespace quilmark {

namespace {

// Pixels at 96 dpi.
constexpr int kInset = 8, kGap = 6, kRadius = 8;

Color GroundOf(const Palette& palette, const TagLook& look) {
  if (look.isChosen) return palette.accent;
  return look.isHot ? palette.accentSoft : palette.controlBackground;
}

Color MutedOn(const Palette& palette, Color ground) {
  return palette.isSystem ? palette.text : ReadableOn(ground, palette.muted);
}

}  // namespace

TagText SplitCaption(const std::u16string& caption) {
  const size_t end = caption.find(u"\r\n");
  if (end == std::u16string::npos) return {.name = caption};
  return {.name = caption.substr(0, end), .count = caption.substr(end + 2)};
}

void PaintTag(Canvas& canvas, const ViewContext& context, const Rect& place, const TagText& text,
              const TagLook& look) {
  const Palette& palette = context.palette;
  const Color ground = GroundOf(palette, look);
  canvas.FillRound(place, context.Scaled(kRadius), ground);
  const Color color = look.isChosen ? palette.accentText : palette.text;
  const int inset = context.Scaled(kInset), gap = context.Scaled(kGap), width = Width(place);
  const int countWidth = context.fonts.WidthOf(FontRole::kFilter, text.count);
  const int nameWidth = context.fonts.WidthOf(FontRole::kFilter, text.name);
  const int shownName = std::min(nameWidth, std::max(width - 2 * inset - gap - countWidth, 0));
  const int left = place.left + std::max((width - shownName - gap - countWidth) / 2, inset);
  canvas.Text({left, place.top, left + shownName + 1, place.bottom}, text.name,
              {.font = FontRole::kFilter, .color = color});
  const int countLeft = left + shownName + gap;
  canvas.Text({countLeft, place.top, countLeft + countWidth + 1, place.bottom}, text.count,
              {.font = FontRole::kFilter, .color = look.isChosen ? color : MutedOn(palette, ground)});
  if (look.hasFocus) canvas.OutlineRound(place, context.Scaled(kRadius), palette.focusRing);
}

}  // namespace quilmark
