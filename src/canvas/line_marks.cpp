#include "canvas/line_marks.h"

#include <algorithm>
#include <utility>

namespace quilmark {

std::vector<TextRange> RangesOfLine(std::span<const TextRange> hits, size_t begin, size_t length) {
  std::vector<TextRange> ranges;
  for (const TextRange& hit : hits) {
    const size_t from = std::max(hit.begin, begin),
                 to = std::min(hit.begin + hit.length, begin + length);
    if (from < to) ranges.push_back({from - begin, to - from});
  }
  return ranges;
}

std::vector<PixelSpan> JoinSpans(std::vector<PixelSpan> units) {
  for (PixelSpan& unit : units) {
    if (unit.right < unit.left) std::swap(unit.left, unit.right);
  }
  std::erase_if(units, [](const PixelSpan& unit) { return unit.left == unit.right; });
  std::sort(units.begin(), units.end(),
            [](const PixelSpan& one, const PixelSpan& other) { return one.left < other.left; });
  std::vector<PixelSpan> spans;
  for (const PixelSpan& unit : units) {
    if (spans.empty() || unit.left > spans.back().right) {
      spans.push_back(unit);
    } else {
      spans.back().right = std::max(spans.back().right, unit.right);
    }
  }
  return spans;
}

size_t ShownUnits(std::u16string_view text, std::u16string_view shown) {
  if (text == shown) return text.size();
  constexpr size_t kEllipsis = 3;
  const size_t most = shown.size() - std::min(shown.size(), kEllipsis);
  const auto differ = std::mismatch(text.begin(), text.end(), shown.begin(),
                                    shown.begin() + static_cast<ptrdiff_t>(most));
  return static_cast<size_t>(differ.first - text.begin());
}

size_t LineLength(std::u16string_view text, size_t fitting) {
  if (fitting >= text.size()) return text.size();
  const size_t blank = text.rfind(u' ', fitting);
  if (blank != std::u16string_view::npos && blank > 0) return blank + 1;
  const bool isHalf = fitting > 0 && (text[fitting - 1] & 0xFC00) == 0xD800;
  return std::max<size_t>(fitting - (isHalf ? 1 : 0), isHalf && fitting == 1 ? 2 : 1);
}

size_t InkLength(std::u16string_view line) { return line.find_last_not_of(u' ') + 1; }

}  // namespace quilmark
