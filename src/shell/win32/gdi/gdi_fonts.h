// The fonts of the window, and how wide texts are in them.
#pragma once

#include <array>
#include <cstdint>
#include <optional>

#include "canvas/text_measure.h"
#include "shell/win32/gdi/gdi.h"

namespace quilmark {

using FontSet = std::array<UniqueFont, kFontRoles>;
FontSet MakeFonts(uint32_t dpi, bool chinese);

// Measures on a device context of its own: none is asked of the system for a text. Interface thread.
class GdiFonts : public TextMeasure {
 public:
  HFONT Of(FontRole role) const { return fonts_[static_cast<size_t>(role)].Get(); }

  // Gives the former ones, which controls hold until they are told of the new.
  [[nodiscard]] FontSet Take(FontSet fonts);
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

GdiFonts& CurrentFonts();

}  // namespace quilmark
