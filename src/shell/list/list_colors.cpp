#include "shell/list/list_colors.h"

#include "config/contrast.h"

namespace quilmark {

namespace {

// A row under the mouse is tinted by the letters: in the hue of whatever the user has chosen.
constexpr int kHoverPercent = 8;
// Between the bar and its border. A band of its own colour would stand out of a preset.
constexpr int kBandPercent = 40, kPanelPercent = 50;
constexpr int kGlyphPercent = 65;

// The user's colour, unless a hit cannot be read in it at all.
Color HitText(Color hit, Color wanted) {
  constexpr double kLeast = 3;
  return ContrastRatio(hit, wanted) >= kLeast ? wanted : ReadableOn(hit, wanted);
}

// `beside`: what a hit has to stand out of. Under the mouse it stays as it was.
RowColors RowOf(const Palette& palette, Color ground, Color text, Color beside) {
  const Color hit = AdjustHighlightContrast(palette.textHit, palette.searchHit, beside);
  return {.ground = ground,
          .text = text,
          .muted = ReadableOn(ground, palette.muted),
          .hit = hit,
          .hitText = HitText(hit, palette.textHit),
          .folder = palette.accent,
          .file = MixColor(palette.text, ground, kGlyphPercent)};
}

struct OnGround {
  Color ground, text;
};

RowColors SystemRow(OnGround row, OnGround hit) {
  return {.ground = row.ground,
          .text = row.text,
          .muted = row.text,
          .hit = hit.ground,
          .hitText = hit.text,
          .folder = row.text,
          .file = row.text};
}

RowColors SystemRowOf(const Palette& palette, RowState state) {
  const OnGround plain = {palette.surface, palette.text}, marked = {palette.rowSel, palette.rowSelText};
  if (state == RowState::kSelected) return SystemRow(marked, plain);
  return SystemRow(state == RowState::kPlain ? plain : OnGround{palette.surface, palette.focusRing},
                   marked);
}

}  // namespace

RowColors RowColorsOf(const Palette& palette, RowState state) {
  if (palette.isSystem) return SystemRowOf(palette, state);
  if (state == RowState::kSelected) {
    return RowOf(palette, palette.rowSel, palette.rowSelText, palette.rowSel);
  }
  const Color hover = MixColor(palette.text, palette.surface, kHoverPercent);
  return RowOf(palette, state == RowState::kHovered ? hover : palette.surface, palette.text,
               palette.surface);
}

ListColors ListColorsOf(const Palette& palette) {
  ListColors colors{.plain = RowColorsOf(palette, RowState::kPlain),
                    .hovered = RowColorsOf(palette, RowState::kHovered),
                    .selected = RowColorsOf(palette, RowState::kSelected),
                    .band = palette.headerBackground,
                    .bandText = palette.header,
                    .panel = palette.panelBackground,
                    .status = palette.text};
  if (palette.isSystem) return colors;
  colors.band = MixColor(palette.border, palette.toolbar, kBandPercent);
  colors.panel = MixColor(palette.toolbar, palette.surface, kPanelPercent);
  colors.status = ReadableOn(palette.toolbar, palette.muted);
  return colors;
}

}  // namespace quilmark
