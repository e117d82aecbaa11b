#include "shell/layout.h"

#include <algorithm>

#include "platform/mul_div.h"

namespace quilmark {

namespace {

// Pixels at 96 dpi.
constexpr int kLeftMargin = 20, kTop = 16, kGap = 12, kRowHeight = 38;
constexpr int kScopeWidth = 120, kLeastSearchWidth = 80;
constexpr int kListHeader = 40, kListPitch = 44, kListMargin = 2, kScrollbar = 10;

}  // namespace

int ScaleFor(uint32_t dpi, int n) { return MulDiv(n, dpi == 0 ? 96 : static_cast<int>(dpi), 96); }

TopRowLayout LayoutTopRow(const TopRowInput& input) {
  const auto scaled = [&input](int n) { return ScaleFor(input.dpi, n); };
  const int top = scaled(kTop), bottom = top + scaled(kRowHeight);
  const int scopeLeft = scaled(kLeftMargin), scopeRight = scopeLeft + scaled(kScopeWidth);
  const int searchLeft = scopeRight + scaled(kGap);
  const int searchRight =
      std::max(input.clientWidth - scaled(kLeftMargin), searchLeft + scaled(kLeastSearchWidth));
  return {.scope = {scopeLeft, top, scopeRight, bottom},
          .search = {searchLeft, top, searchRight, bottom}};
}

ListLayout LayoutList(const ListInput& input) {
  const auto scaled = [&input](int n) { return ScaleFor(input.dpi, n); };
  const int right = std::max(input.clientWidth - scaled(kScrollbar) - kListMargin, 0);
  const int headerBottom = input.headerTop + scaled(kListHeader);
  const int bottom = std::max(input.clientHeight - kListMargin, headerBottom);
  return {.header = {0, input.headerTop, input.clientWidth, headerBottom},
          .rows = {0, headerBottom, right, bottom},
          .pitch = std::max(scaled(kListPitch), 1)};
}

int64_t ClampScroll(int64_t scrollY, uint64_t rowCount, const ListLayout& layout) {
  const int64_t height = layout.rows.bottom - layout.rows.top;
  const int64_t limit = std::max<int64_t>(static_cast<int64_t>(rowCount) * layout.pitch - height, 0);
  return std::clamp<int64_t>(scrollY, 0, limit);
}

RowsInView RowsToPaint(int64_t scrollY, uint64_t rowCount, const ListLayout& layout) {
  const auto first = static_cast<uint64_t>(std::max<int64_t>(scrollY, 0) / layout.pitch);
  const auto fitting = static_cast<uint64_t>((layout.rows.bottom - layout.rows.top) / layout.pitch);
  return {std::min(first, rowCount), std::min(first + fitting + 2, rowCount)};
}

}  // namespace quilmark
