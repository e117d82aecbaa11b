#include <windows.h>

#include <limits>

#include "platform/code_pages_ansi.h"

namespace quilmark {

namespace {

// With an empty `bytes` gives the number of bytes needed. 0 on failure, also where a character has no
// form.
int Convert(std::u16string_view text, std::string& bytes) {
  BOOL usedDefault = FALSE;
  // Without the flag Windows would put a look-alike ("A" for U+0100) in the place of a missing
  // character.
  const int size =
      WideCharToMultiByte(CP_ACP, WC_NO_BEST_FIT_CHARS, reinterpret_cast<const wchar_t*>(text.data()),
                          static_cast<int>(text.size()), bytes.data(), static_cast<int>(bytes.size()),
                          nullptr, &usedDefault);
  return usedDefault ? 0 : size;
}

}  // namespace

bool AnsiIsUtf8() { return GetACP() == CP_UTF8; }

std::optional<std::string> EncodeAnsi(std::u16string_view text) {
  std::string bytes;
  if (text.empty()) return bytes;
  if (text.size() > std::numeric_limits<int>::max() / 4) return std::nullopt;
  const int size = Convert(text, bytes);
  if (size <= 0) return std::nullopt;
  bytes.resize(static_cast<size_t>(size));
  if (Convert(text, bytes) != size) return std::nullopt;
  return bytes;
}

}  // namespace quilmark
