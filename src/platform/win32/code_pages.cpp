#include <windows.h>

#include <algorithm>
#include <limits>

#include "platform/code_pages.h"
#include "platform/code_pages_ansi.h"

namespace quilmark {

namespace {

constexpr size_t kMostUnits = std::numeric_limits<int>::max() / 4;

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

size_t AnsiToUnits(std::string_view bytes, char16_t* out) {
  if (bytes.empty() || bytes.size() > kMostUnits) return 0;
  const int size = static_cast<int>(bytes.size());
  const int count =
      MultiByteToWideChar(CP_ACP, 0, bytes.data(), size, reinterpret_cast<wchar_t*>(out), size);
  return static_cast<size_t>(std::max(count, 0));
}

std::optional<std::string> EncodeAnsi(std::u16string_view text) {
  std::string bytes;
  if (text.empty()) return bytes;
  if (text.size() > kMostUnits) return std::nullopt;
  const int size = Convert(text, bytes);
  if (size <= 0) return std::nullopt;
  bytes.resize(static_cast<size_t>(size));
  if (Convert(text, bytes) != size) return std::nullopt;
  return bytes;
}

std::string EncodeAnsiLossy(std::u16string_view text) {
  // No form has more than four bytes a unit.
  std::string bytes(4 * std::min<size_t>(text.size(), kMostUnits), '\0');
  const int size = WideCharToMultiByte(CP_ACP, 0, reinterpret_cast<const wchar_t*>(text.data()),
                                       static_cast<int>(bytes.size() / 4), bytes.data(),
                                       static_cast<int>(bytes.size()), nullptr, nullptr);
  bytes.resize(static_cast<size_t>(std::max(size, 0)));
  return bytes;
}

}  // namespace quilmark
