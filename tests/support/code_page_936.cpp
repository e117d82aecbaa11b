#include "support/code_page_936.h"

#include <gtest/gtest.h>

#ifdef _WIN32
#include <windows.h>
#else
#include <iconv.h>
#endif

namespace quilmark {

#ifdef _WIN32

// Bytes written; 0 where the unit cannot be converted.
static size_t Encode936(char16_t unit, unsigned char (&bytes)[4]) {
  const wchar_t wide = static_cast<wchar_t>(unit);
  BOOL usedDefault = FALSE;
  const int written = WideCharToMultiByte(936, 0, &wide, 1, reinterpret_cast<char*>(bytes), sizeof bytes,
                                          nullptr, &usedDefault);
  if (written == 0) ADD_FAILURE() << "code page 936 is missing: error " << GetLastError();
  return usedDefault ? 0 : static_cast<size_t>(written);
}

#else

static size_t Encode936(char16_t unit, unsigned char (&bytes)[4]) {
  static const iconv_t converter = iconv_open("GBK", "UTF-16LE");
  if (converter == reinterpret_cast<iconv_t>(-1)) {
    ADD_FAILURE() << "iconv knows no GBK";
    return 0;
  }
  char input[2] = {static_cast<char>(unit & 0xFF), static_cast<char>(unit >> 8)};
  char *from = input, *to = reinterpret_cast<char*>(bytes);
  size_t left = sizeof input, room = sizeof bytes;
  const size_t irreversible = iconv(converter, &from, &left, &to, &room);
  if (irreversible == 0) return sizeof bytes - room;
  iconv(converter, nullptr, nullptr, nullptr, nullptr);  // back to the initial state after a failure
  return 0;
}

#endif

std::optional<uint16_t> CodePage936CodeOf(char16_t unit) {
  unsigned char bytes[4] = {};
  if (Encode936(unit, bytes) != 2) return std::nullopt;
  return static_cast<uint16_t>(bytes[0] << 8 | bytes[1]);
}

}  // namespace quilmark
