// The fonts of the window, and how wide texts are in them.
#pragma once

#include <array>
#include <cstdint>
#include <optional>

#include "canvas/text_measure.h"
#include "shell/win32/gdi/gdi.h"

namespace quilmark {

// One font for each role.
using FontSet = std::array<UniqueFont, kFontRoles>;

// The fonts for a dpi; `chinese` chooses the face. A font that the system does not make is empty.
FontSet MakeFonts(uint32_t dpi, bool chinese);

// The fonts in force. Measures on one device context of its own, since asking the system for one with
// each text is slow. Interface thread.
class GdiFonts : public TextMeasure {
 public:
  // The font of a role, to be drawn with; null before the first Take.
  HFONT Of(FontRole role) const { return fonts_[static_cast<size_t>(role)].Get(); }

  // Puts others in force, and gives back the former ones: controls hold those until they are told of the
  // new ones.
  [[nodiscard]] FontSet Take(FontSet fonts);

  // Frees the fonts and the device context.
  void Release();

  int WidthOf(FontRole font, std::u16string_view text) const override;
  int LineHeight(FontRole font) const override;
  size_t UnitsWithin(FontRole font, std::u16string_view text, int width) const override;
  uint32_t Version() const override { return version_; }

 private:
  HDC Dc(FontRole font) const;
  void Deselect();

  FontSet fonts_;
  uint32_t version_ = 0;
  mutable UniqueMemoryDc dc_;
  mutable std::optional<FontRole> selected_;
};

// The fonts of the window.
GdiFonts& CurrentFonts();

}  // namespace quilmark
