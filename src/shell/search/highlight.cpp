#include "shell/search/highlight.h"

#include "platform/text.h"
#include "search/query/query.h"

namespace quilmark {

std::u16string HighlightTerm(std::u16string_view searchBox) {
  std::u16string term(searchBox);
  TrimQuery(term);
  if (IsContentPrefix(term)) {
    term.erase(0, 2);
    const size_t bar = term.find(u'|');
    if (bar != std::u16string::npos) term.resize(bar);
    TrimQuery(term);
  }
  return FoldText(term);
}

std::vector<TextRange> HighlightRanges(std::u16string_view name, std::u16string_view term) {
  std::vector<TextRange> ranges;
  if (term.empty()) return ranges;
  const std::u16string folded = FoldText(name);
  for (size_t at = folded.find(term); at != std::u16string::npos;
       at = folded.find(term, at + term.size())) {
    ranges.push_back({at, term.size()});
  }
  return ranges;
}

}  // namespace quilmark
