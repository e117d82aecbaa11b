// The controls that narrow the results: presets, custom ranges, category tags.
#pragma once

#include <windows.h>

#include <cstddef>
#include <string>
#include <vector>

#include "shell/search/layout.h"
#include "shell/win32/controls/control_host.h"

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

// The controls with the state of the main window, whose host this is.
ControlHost& MainWindowHost();

inline constexpr size_t kLongestQuery = 255;  // units that the search box takes

int Scaled(int n);  // pixels for `n` pixels at 96 dpi
bool IsCustomCombo(UINT id);
HWND MakeSearchBox(HWND parent, HFONT font);
HWND MakeCombo(HWND parent, int id, HFONT font);
void PlaceCombo(HWND combo, const Rect& field, bool isShown);
void DrawComboItem(const DRAWITEMSTRUCT& item);
void StyleDropDown(HWND combo);
void StyleDatePicker(HWND picker);
void ApplySearchBoxRect(HWND edit);

}  // namespace quilmark
