#include "shell/list_colors.h"

#include "config/contrast.h"

namespace quilmark {

namespace {

// A row under the mouse is tinted by the letters: in the hue of whatever the user has chosen.
constexpr int kHoverPercent = 8;
// Between the bar and its border. A band of its own colour would stand out of a preset.
constexpr int kBandPercent = 40, kPanelPercent = 50;

// The user's colour, unless a hit cannot be read in it at all.
Color HitText(Color hit, Color wanted) {
  constexpr double kLeast = 3;
  return ContrastRatio(hit, wanted) >= kLeast ? wanted : ReadableOn(hit, wanted);
}

RowColors RowOf(const Palette& palette, Color ground, Color text) {
  const Color hit = AdjustHighlightContrast(palette.textHit, palette.searchHit, ground);
  return {.ground = ground,
          .text = text,
          .muted = ReadableOn(ground, palette.muted),
          .hit = hit,
          .hitText = HitText(hit, palette.textHit),
          .folder = palette.accent,
          .file = palette.muted};
}

RowColors SystemRow(Color ground, Color text, Color muted, Color hit, Color hitText) {
  return {.ground = ground,
          .text = text,
          .muted = muted,
          .hit = hit,
          .hitText = hitText,
          .folder = text,
          .file = text};
}

ListColors SystemListColors(const Palette& palette) {
  return {.plain =
              SystemRow(palette.surface, palette.text, palette.text, palette.rowSel, palette.rowSelText),
          .hovered = SystemRow(palette.surface, palette.focusRing, palette.focusRing, palette.rowSel,
                               palette.rowSelText),
          .selected = SystemRow(palette.rowSel, palette.rowSelText, palette.rowSelText, palette.surface,
                                palette.text),
          .band = palette.headerBackground,
          .bandText = palette.header,
          .panel = palette.panelBackground,
          .status = palette.text};
}

}  // namespace

ListColors ListColorsOf(const Palette& palette) {
  if (palette.isSystem) return SystemListColors(palette);
  const Color hover = MixColor(palette.text, palette.surface, kHoverPercent);
  return {.plain = RowOf(palette, palette.surface, palette.text),
          .hovered = RowOf(palette, hover, palette.text),
          .selected = RowOf(palette, palette.rowSel, palette.rowSelText),
          .band = MixColor(palette.border, palette.toolbar, kBandPercent),
          .bandText = palette.header,
          .panel = MixColor(palette.toolbar, palette.surface, kPanelPercent),
          .status = ReadableOn(palette.toolbar, palette.muted)};
}

}  // namespace quilmark
