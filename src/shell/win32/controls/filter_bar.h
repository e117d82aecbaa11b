// The controls that narrow the results: presets, custom ranges, category tags.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "shell/search/layout.h"

namespace quilmark {

class FilterBar {
 public:
  // Makes the controls, hidden where they are not wanted.
  void Open(HWND parent, HFONT font, HFONT tagFont);
  void SetFonts(HFONT font, HFONT tagFont);

  // One button a category, with no count yet.
  void RebuildTags(HWND parent);
  // Gives the tags their captions; redraws those that changed. True if one did.
  bool SetCaptions(const std::vector<std::u16string>& captions);
  void RedrawTags() const;

  // Moves what must move; the height of all that stands above the list.
  void Place(const TopRowLayout& row);
  int PlaceTags();

  // From the controls into the settings.
  void ReadDates() const;
  void ReadSizeText() const;

 private:
  HWND sizePreset_ = nullptr, timePreset_ = nullptr, sizeBox_ = nullptr, secondSizeBox_ = nullptr;
  HWND sizeUnit_ = nullptr, dateFrom_ = nullptr, dateTo_ = nullptr;
  HFONT tagFont_ = nullptr;
  std::vector<HWND> tags_;
};

void DrawTagItem(const DRAWITEMSTRUCT& item);

}  // namespace quilmark
