// The Windows border of text: char16_t of the program and wchar_t of the system are the same units.
#pragma once

#include <string>
#include <string_view>

namespace quilmark {

static_assert(sizeof(wchar_t) == sizeof(char16_t));

// The same units under the system's name. The pointer is good until the string changes.
inline const wchar_t* Wide(const char16_t* text) { return reinterpret_cast<const wchar_t*>(text); }

// The same, to be written to.
inline wchar_t* Wide(char16_t* text) { return reinterpret_cast<wchar_t*>(text); }

// The same of a whole string, which ends with a NUL.
inline const wchar_t* Wide(const std::u16string& text) { return Wide(text.c_str()); }

// The same units under the program's name.
inline const char16_t* FromWide(const wchar_t* text) { return reinterpret_cast<const char16_t*>(text); }

// The same of a view.
inline std::u16string_view FromWide(std::wstring_view text) {
  return {FromWide(text.data()), text.size()};
}

}  // namespace quilmark
