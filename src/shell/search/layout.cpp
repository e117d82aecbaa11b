#include "shell/search/layout.h"

#include <algorithm>

#include "shell/view/scrollbar.h"

namespace quilmark {

namespace {

// Pixels at 96 dpi.
constexpr int kLeftMargin = 20, kTop = 16, kGap = 12, kEditHeight = 38, kSlit = 3;
constexpr int kScopeWidth = 120, kLeastSearchWidth = 80, kPresetWidth = 130;
constexpr int kSizeBoxWidth = 78, kUnitWidth = 78, kDateWidth = 130;
constexpr int kTagLeft = 20, kTagTop = 74, kTagHeight = 40, kTagGap = 8, kTagInset = 12;
constexpr int kLeastTag = 72, kMostTag = 220, kCountGap = 6;
constexpr int kNoTagsHeader = 90, kSidebarHeader = 70;
constexpr int kSidebarRow = 44, kSidebarInset = 8;

}  // namespace

TopRowLayout LayoutTopRow(const TopRowInput& input) {
  const auto scaled = [&input](int n) { return ScaleFor(input.dpi, n); };
  const int top = scaled(kTop), gap = scaled(kGap), margin = scaled(kLeftMargin), slit = scaled(kSlit);
  const int preset = scaled(kPresetWidth), unit = scaled(kUnitWidth), box = scaled(kSizeBoxWidth);
  const int date = scaled(kDateWidth), scope = scaled(kScopeWidth);
  const auto at = [&](int left, int width) {
    return Rect{left, top, left + width, top + scaled(kEditHeight)};
  };

  const int sizeExtra = input.sizeCustom ? unit + slit + box + gap : 0;
  const int timeExtra = input.timeCustom ? 2 * date + slit + gap : 0;
  const int wanted = !input.presets
                         ? input.clientWidth + gap - margin
                         : input.clientWidth - 2 * preset - sizeExtra - timeExtra - gap - margin;
  // A narrow window keeps a usable search box and lets the presets run off the right edge.
  const int presetLeft = std::max(wanted, scope + scaled(kLeastSearchWidth) + gap + margin);
  const int searchLeft = margin + scope + gap;
  const int sizeBoxLeft = presetLeft + preset + slit;
  const int unitLeft = sizeBoxLeft + box + slit;
  const int timeLeft = (input.sizeCustom ? unitLeft + unit : presetLeft + preset) + gap;
  const int fromLeft = timeLeft + preset + slit;
  return {.scope = at(margin, scope),
          .search = at(searchLeft, std::max(presetLeft - searchLeft - gap, scaled(kLeastSearchWidth))),
          .sizePreset = at(presetLeft, preset),
          .sizeBox = at(sizeBoxLeft, box),
          .sizeUnit = at(unitLeft, unit),
          .timePreset = at(timeLeft, preset),
          .dateFrom = at(fromLeft, date),
          .dateTo = at(fromLeft + date + slit, date)};
}

FilterBarLayout LayoutFilterBar(const FilterBarInput& input) {
  const auto scaled = [&input](int n) { return ScaleFor(input.dpi, n); };
  if (input.sidebar) return {.headerTop = scaled(kSidebarHeader)};
  if (input.tagWidths.empty()) return {.headerTop = scaled(kNoTagsHeader)};
  const int left = scaled(kTagLeft), height = scaled(kTagHeight), gap = scaled(kTagGap);
  const int usable = std::max(input.clientWidth - 2 * left, 1);
  FilterBarLayout layout;
  int x = left, y = scaled(kTagTop), rows = 1;
  for (const int wanted : input.tagWidths) {
    const int width = std::min(wanted, usable);
    if (x > left && x + width > left + usable) {
      x = left;
      y += height + gap;
      ++rows;
    }
    layout.tags.push_back({x, y, x + width, y + height});
    x += width + gap;
  }
  layout.headerTop = (rows - 1) * gap + height * rows + scaled(16) + scaled(4) + scaled(70);
  return layout;
}

int FilterTagWidth(uint32_t dpi, int nameWidth, int countWidth) {
  const int width = nameWidth + 2 * ScaleFor(dpi, kTagInset) +
                    (countWidth > 0 ? countWidth + ScaleFor(dpi, kCountGap) : 0);
  return std::clamp(width, ScaleFor(dpi, kLeastTag), ScaleFor(dpi, kMostTag));
}

SidebarLayout LayoutSidebar(const SidebarInput& input) {
  const auto scaled = [&input](int n) { return ScaleFor(input.dpi, n); };
  const int inset = scaled(kSidebarInset), row = scaled(kSidebarRow), pitch = row + scaled(kTagGap);
  SidebarLayout layout;
  layout.fitting = std::max((input.clientHeight - input.headerTop - inset + scaled(kTagGap)) / pitch, 1);
  layout.scrollLimit = std::max(input.tags - layout.fitting, 0);
  layout.first = std::clamp(input.scroll, 0, layout.scrollLimit);
  int right = std::max(input.sidebarWidth - inset, inset);
  if (layout.scrollLimit > 0) {
    const int edge = input.sidebarWidth - 1;
    const Rect track = {edge - scaled(kBarWidth), input.headerTop, edge, input.clientHeight};
    const Scrollbar bar = PlaceThumb(
        track, Bar::kVertical, {layout.fitting, layout.scrollLimit, layout.first}, scaled(kLeastThumb));
    layout.track = bar.track;
    layout.thumb = bar.thumb;
    right = std::max(layout.track.left - inset / 2, inset);
  }
  for (int i = layout.first; i < std::min(layout.first + layout.fitting, input.tags); ++i) {
    const int top = input.headerTop + inset + (i - layout.first) * pitch;
    layout.rows.push_back({inset, top, right, top + row});
  }
  return layout;
}

int SidebarDragTo(const SidebarLayout& sidebar, int y) {
  const int thumb = Height(sidebar.thumb);
  const int way = Height(sidebar.track) - thumb;
  if (way <= 0) return 0;
  const int place = std::clamp(y - thumb / 2 - sidebar.track.top, 0, way);
  return (place * sidebar.scrollLimit + way / 2) / way;
}

}  // namespace quilmark
