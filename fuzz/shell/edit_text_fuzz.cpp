// Any text that is pasted, and any caret: one line comes out, which is a part of the text, and words
// begin before the caret, one after another down to the text's start.
#include "shell/view/edit_text.h"

#include "support/fuzz_input.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace quilmark;
  const std::u16string text = UnitsOf(InputOf(data, size).rest);
  const std::u16string line = FirstLine(text);
  Require(line.find_first_of(u"\t\r\n") == line.npos && !line.starts_with(u' '));
  std::u16string plain = text;
  std::replace(plain.begin(), plain.end(), u'\t', u' ');
  Require(plain.find(line) != plain.npos);
  Require(line.empty() == (text.find_first_not_of(u" \t\r\n") == text.npos));

  for (size_t caret = text.size(); caret > 0;) {
    const size_t start = WordStart(text, caret);
    Require(start < caret);
    const bool isAtSeparator =
        start == 0 || std::u16string_view(u" \\/").find(text[start - 1]) != std::u16string_view::npos;
    // Blanks in front of the first word go with it.
    Require(isAtSeparator && (start == 0 || text[start] != u' '));
    caret = start;
  }
  return 0;
}
