#include "platform/code_pages.h"

#include "platform/code_pages_ansi.h"
#include "platform/utf.h"

namespace quilmark {

namespace {

bool HasLoneSurrogate(std::u16string_view text) {
  for (size_t i = 0; i < text.size(); ++i) {
    if (!IsSurrogate(text[i])) continue;
    const bool isPair = IsHighSurrogate(text[i]) && i + 1 < text.size() && IsLowSurrogate(text[i + 1]);
    if (!isPair) return true;
    ++i;
  }
  return false;
}

std::optional<std::string> EncodeUtf8(std::u16string_view text) {
  if (HasLoneSurrogate(text)) return std::nullopt;
  return ToUtf8(text);
}

}  // namespace

std::optional<std::string> EncodeText(std::u16string_view text, CodePage page) {
  if (page == CodePage::kAnsi && !AnsiIsUtf8()) return EncodeAnsi(text);
  return EncodeUtf8(text);
}

}  // namespace quilmark
