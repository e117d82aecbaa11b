// Any text in both code pages: what has a form reads back as it was, and what has none is text that the
// code page cannot hold.
#include "platform/code_pages.h"
#include "platform/utf.h"
#include "support/fuzz_input.h"

using namespace quilmark;

namespace {

// Code page 1252 of the bytes 0x80 to 0x9F.
constexpr std::u16string_view kHigh =
    u"\u20AC\x81\u201A\u0192\u201E\u2026\u2020\u2021\u02C6\u2030\u0160\u2039\u0152\x8D\u017D\x8F"
    u"\x90\u2018\u2019\u201C\u201D\u2022\u2013\u2014\u02DC\u2122\u0161\u203A\u0153\x9D\u017E\u0178";

char16_t UnitOf(unsigned char byte) { return byte >= 0x80 && byte < 0xA0 ? kHigh[byte - 0x80u] : byte; }

bool IsIn1252(char16_t unit) {
  for (unsigned byte = 0; byte < 256; ++byte) {
    if (UnitOf(static_cast<unsigned char>(byte)) == unit) return true;
  }
  return false;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::u16string text = UnitsOf(InputOf(data, size).rest);
  const auto utf8 = EncodeText(text, CodePage::kUtf8);
  if (utf8) {
    Require(FromUtf8(*utf8) == text);
  } else {
    Require(FromUtf8(ToUtf8(text)) != text);
  }

  const auto ansi = EncodeText(text, CodePage::kAnsi);
  Require(ansi.has_value() == std::all_of(text.begin(), text.end(), IsIn1252));
  if (!ansi) return 0;
  Require(ansi->size() == text.size());
  for (size_t i = 0; i < text.size(); ++i) {
    Require(UnitOf(static_cast<unsigned char>((*ansi)[i])) == text[i]);
  }
  return 0;
}
