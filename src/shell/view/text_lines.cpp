#include "shell/view/text_lines.h"

#include <algorithm>

#include "canvas/line_marks.h"

namespace quilmark {

void PaintLines(Canvas& canvas, const ViewContext& context, const Rect& place, std::u16string_view text,
                const TextStyle& style, const Marks& marks) {
  const int width = Width(place), height = context.fonts.LineHeight(style.font);
  size_t begin = 0;
  for (int top = place.top; begin < text.size(); top += height) {
    const std::u16string_view rest = text.substr(begin);
    const bool isLast = top + 2 * height > place.bottom;
    const size_t length =
        isLast ? rest.size() : LineLength(rest, context.fonts.UnitsWithin(style.font, rest, width));
    const std::u16string_view line = isLast ? rest : rest.substr(0, InkLength(rest.substr(0, length)));
    const int shown = std::min(context.fonts.WidthOf(style.font, line), width);
    const int left = place.left + (width - shown) / 2;
    const auto ranges = RangesOfLine(marks.ranges, begin, line.size());
    canvas.Text({left, top, left + shown + 1, top + height}, line, style,
                {.ranges = ranges, .ground = marks.ground, .text = marks.text});
    begin += length;
    if (isLast) return;
  }
}

}  // namespace quilmark
