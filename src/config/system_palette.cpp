#include "config/system_palette.h"

namespace quilmark {

Palette SystemPalette(const SystemColors& colors) {
  Palette palette;
  palette.isSystem = true;
  for (Color Palette::*const ground :
       {&Palette::surface, &Palette::editWell, &Palette::cardBackground, &Palette::alternateRow}) {
    palette.*ground = colors.window;
  }
  for (Color Palette::*const face :
       {&Palette::toolbar, &Palette::windowFrame, &Palette::controlBackground, &Palette::accentSoft,
        &Palette::headerBackground, &Palette::panelBackground, &Palette::tabBackground}) {
    palette.*face = colors.buttonFace;
  }
  for (Color Palette::*const line : {&Palette::text, &Palette::header, &Palette::border,
                                     &Palette::separator, &Palette::buttonBorder}) {
    palette.*line = colors.windowText;
  }
  for (Color Palette::*const mark : {&Palette::rowSel, &Palette::accent, &Palette::searchHit}) {
    palette.*mark = colors.highlight;
  }
  for (Color Palette::*const onMark : {&Palette::rowSelText, &Palette::accentText, &Palette::textHit}) {
    palette.*onMark = colors.highlightText;
  }
  palette.muted = palette.mutedFixed = colors.grayText;
  palette.accentStrong = palette.focusRing = colors.hotLight;
  return palette;
}

Palette PaletteInForce(bool dark, const ColorOverrides& overrides,
                       const std::optional<SystemColors>& system) {
  return system ? SystemPalette(*system) : WithOverrides(ThemeDefaults(dark), overrides);
}

}  // namespace quilmark
