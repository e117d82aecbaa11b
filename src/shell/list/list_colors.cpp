#include "shell/list/list_colors.h"

#include "config/contrast.h"

namespace quilmark {

namespace {

// A row under the mouse is tinted by the letters: in the hue of whatever the user has chosen.
constexpr int kHoverPercent = 8;
// The band lies between the colours of the bar and its border: a colour of its own would not fit a
// preset.
constexpr int kBandPercent = 40, kPanelPercent = 50;

// The colour that the user has chosen, unless a hit could not be read in it at all.
Color HitText(Color hit, Color wanted) {
  constexpr double kLeast = 3;
  return ContrastRatio(hit, wanted) >= kLeast ? wanted : ReadableOn(hit, wanted);
}

// `beside` is the ground that a hit has to stand out of: under the mouse its colour stays what it was.
RowColors RowOf(const Palette& palette, Color ground, Color text, Color beside) {
  const Color hit = AdjustHighlightContrast(palette.textHit, palette.searchHit, beside);
  return {.ground = ground,
          .text = text,
          .muted = ReadableOn(ground, palette.muted),
          .hit = hit,
          .hitText = HitText(hit, palette.textHit)};
}

struct OnGround {
  Color ground, text;
};

RowColors SystemRow(OnGround row, OnGround hit) {
  return {
      .ground = row.ground, .text = row.text, .muted = row.text, .hit = hit.ground, .hitText = hit.text};
}

ListColors SystemListColors(const Palette& palette) {
  const OnGround plain = {palette.surface, palette.text}, marked = {palette.rowSel, palette.rowSelText};
  const Color hot = palette.focusRing;
  return {.plain = SystemRow(plain, marked),
          .hovered = SystemRow({palette.surface, hot}, marked),
          .selected = SystemRow(marked, plain),
          .band = palette.headerBackground,
          .bandText = palette.header,
          .panel = palette.panelBackground,
          .status = palette.text};
}

ListColors MixListColors(const Palette& palette) {
  if (palette.isSystem) return SystemListColors(palette);
  const Color hover = MixColor(palette.text, palette.surface, kHoverPercent);
  return {.plain = RowOf(palette, palette.surface, palette.text, palette.surface),
          .hovered = RowOf(palette, hover, palette.text, palette.surface),
          .selected = RowOf(palette, palette.rowSel, palette.rowSelText, palette.rowSel),
          .band = MixColor(palette.border, palette.toolbar, kBandPercent),
          .bandText = palette.header,
          .panel = MixColor(palette.toolbar, palette.surface, kPanelPercent),
          .status = ReadableOn(palette.toolbar, palette.muted)};
}

}  // namespace

ListColors ListColorsOf(const Palette& palette) {
  // Contrasts cost 25 us of powers, a quarter of what two rows cost.
  thread_local Palette latest;
  thread_local ListColors colors = MixListColors(latest);
  if (palette != latest) {
    colors = MixListColors(palette);
    latest = palette;
  }
  return colors;
}

}  // namespace quilmark
