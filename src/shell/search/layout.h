// Where things stand in the window. Pixels at the window's own scale.
#pragma once

#include <cstdint>
#include <vector>

#include "canvas/rect.h"
#include "canvas/scale.h"

namespace quilmark {

// What the places in the row of the search box follow from.
struct TopRowInput {
  int clientWidth = 0;
  uint32_t dpi = 96;
  bool presets = true;      // the presets stand beside the search box
  bool sizeCustom = false;  // the size box and its unit stand behind the size preset
  bool timeCustom = false;  // the two date pickers stand behind the time preset
};

// Where the controls of that row stand.
struct TopRowLayout {
  Rect scope, search, sizePreset, sizeBox, sizeUnit, timePreset, dateFrom, dateTo;
};

// The row of the search box. Total: gives a layout for every width, even a negative one; the custom
// controls have their places also where they are not shown.
TopRowLayout LayoutTopRow(const TopRowInput& input);

// What the places of the tags' buttons follow from.
struct FilterBarInput {
  int clientWidth = 0;
  uint32_t dpi = 96;
  bool sidebar = false;        // tags are rows of the sidebar, not buttons
  std::vector<int> tagWidths;  // as FilterTagWidth gives them
};

// Where the tags' buttons stand, and how high all is that stands above the list.
struct FilterBarLayout {
  std::vector<Rect> tags;  // empty with a sidebar
  int headerTop = 0;       // height of all that stands above the list
};

// Lays out the tags' buttons in as many lines as they need. Total, as LayoutTopRow is.
FilterBarLayout LayoutFilterBar(const FilterBarInput& input);

// Width of a tag's button from the widths of its two texts. `countWidth` is 0 for a tag without a count.
int FilterTagWidth(uint32_t dpi, int nameWidth, int countWidth);

// What the places in the sidebar follow from.
struct SidebarInput {
  int clientHeight = 0, headerTop = 0, sidebarWidth = 0;
  uint32_t dpi = 96;
  int tags = 0;
  int scroll = 0;  // first tag in view
};

// Where the rows of the sidebar and their bar stand.
struct SidebarLayout {
  int fitting = 1;         // tags that fit, at least 1
  int scrollLimit = 0;     // greatest first tag
  int first = 0;           // tag of the first row
  Rect track, thumb;       // of its bar; empty where all fit
  std::vector<Rect> rows;  // of the tags from `first` on that fit
};

// Lays out the sidebar. Total; `scroll` is brought within its limits.
SidebarLayout LayoutSidebar(const SidebarInput& input);

// Which tag is the first in view when the middle of the bar's thumb stands at `y`.
int SidebarDragTo(const SidebarLayout& sidebar, int y);

}  // namespace quilmark
