// Any text as a list of extensions: each piece between commas gives one, trimmed, folded and with its
// dot, and a list that is joined reads back as it was.
#include "config/extension_list.h"
#include "platform/text.h"
#include "platform/utf.h"
#include "support/fuzz_input.h"

using namespace quilmark;

namespace {

// Piece by piece.
std::vector<std::u16string> ListPlainly(std::u16string_view text) {
  std::vector<std::u16string> list;
  std::u16string piece;
  const auto end = [&] {
    const std::u16string_view blanks = u" \t\r\n";
    while (!piece.empty() && blanks.find(piece.back()) != blanks.npos) piece.pop_back();
    while (!piece.empty() && blanks.find(piece.front()) != blanks.npos) piece.erase(0, 1);
    if (!piece.empty()) list.push_back((piece.front() == u'.' ? u"" : u".") + FoldText(piece));
    piece.clear();
  };
  for (const char16_t unit : text) {
    if (unit == u',') end();
    if (unit != u',') piece += unit;
  }
  end();
  return list;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::u16string text = FromUtf8(InputOf(data, size).RestAsText());
  const auto list = ParseExtensionList(text);
  Require(list == ListPlainly(text));
  Require(ParseExtensionList(JoinExtensionList(list)) == list);
  return 0;
}
