// Any bytes of a settings file: the lines are the text in order and within their limit, a pair lies
// within its line, and what is written reads back as it was.
#include <cstdint>
#include <cstdlib>

#include "platform/text_file.h"

using namespace quilmark;

static void CheckPair(std::u16string_view line) {
  const auto pair = SplitKeyValue(line);
  if (pair.has_value() != (line.find(u'=') != std::u16string_view::npos)) std::abort();
  if (!pair) return;
  if (pair->key.size() + pair->value.size() + 1 > line.size()) std::abort();
  if (TrimText(pair->key) != pair->key || TrimText(pair->value) != pair->value) std::abort();
  ParseInt(pair->value);
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  const std::u16string text = DecodeText(bytes);
  if (text.size() > size) std::abort();

  TextLines lines{text};
  std::u16string joined;
  while (const auto line = NextLine(lines)) {
    if (line->empty() || line->size() > kTextLineLimit) std::abort();
    if (line->find(u'\n') < line->size() - 1) std::abort();
    CheckPair(*line);
    joined += *line;
  }
  if (joined != text) std::abort();

  // Lone surrogates of a UTF-16 file are replaced at the first writing; from then on nothing changes.
  const std::u16string once = DecodeText("\xEF\xBB\xBF" + EncodeTextLines(text));
  const std::u16string twice = DecodeText("\xEF\xBB\xBF" + EncodeTextLines(once));
  if (once != twice || once.size() != text.size()) std::abort();
  return 0;
}
