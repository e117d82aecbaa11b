// Any text of the search box and any name: what is marked is the term in the name, none over another,
// and lines share the marks out between them.
#include "shell/search/highlight.h"

#include "canvas/line_marks.h"
#include "platform/text.h"
#include "platform/utf.h"
#include "support/fuzz_input.h"

using namespace quilmark;

namespace {

// Marks unit by unit, line after line of the text as it is laid out.
void CheckLines(std::u16string_view name, const std::vector<TextRange>& marks, size_t fitting) {
  std::vector<bool> marked(name.size()), again(name.size());
  for (const TextRange& mark : marks) {
    for (size_t i = 0; i < mark.length; ++i) marked[mark.begin + i] = true;
  }
  for (size_t begin = 0; begin < name.size();) {
    const size_t length = LineLength(name.substr(begin), fitting);
    Require(length >= 1 && length <= name.size() - begin &&
            InkLength(name.substr(begin, length)) <= length);
    for (const TextRange& part : RangesOfLine(marks, begin, length)) {
      Require(part.length > 0 && part.begin + part.length <= length);
      for (size_t i = 0; i < part.length; ++i) again[begin + part.begin + i] = true;
    }
    begin += length;
  }
  Require(marked == again);
}

void CheckSpans(const std::vector<TextRange>& marks) {
  std::vector<PixelSpan> units;
  for (const TextRange& mark : marks) {
    units.push_back({static_cast<int>(mark.begin + mark.length), static_cast<int>(mark.begin)});
  }
  const auto spans = JoinSpans(units);
  for (size_t i = 0; i < spans.size(); ++i) {
    Require(spans[i].left < spans[i].right && (i == 0 || spans[i].left > spans[i - 1].right));
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  FuzzInput input = InputOf(data, size);
  const size_t fitting = input.Take<uint8_t>();
  const std::u16string term = HighlightTerm(FromUtf8(input.TakeLine()));
  const std::u16string name = FromUtf8(input.RestAsText()), folded = FoldText(name);
  Require(FoldText(term) == term);
  const auto marks = HighlightRanges(name, term);
  Require(!marks.empty() == (!term.empty() && folded.find(term) != folded.npos));
  size_t end = 0;
  for (const TextRange& mark : marks) {
    Require(mark.begin >= end && mark.length == term.size());
    Require(folded.compare(mark.begin, mark.length, term) == 0);
    end = mark.begin + mark.length;
  }
  CheckLines(name, marks, fitting);
  CheckSpans(marks);

  const std::u16string shown = name.substr(0, fitting) + u"...";
  Require(ShownUnits(name, shown) == std::min(fitting, name.size()) || shown == name);
  return 0;
}
