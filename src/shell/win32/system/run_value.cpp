#include "shell/win32/system/run_value.h"

#include <windows.h>

#include <string>

namespace quilmark {

namespace {

constexpr wchar_t kRunKey[] = L"Software\\Microsoft\\Windows\\CurrentVersion\\Run";
constexpr wchar_t kRunValue[] = L"Quilmark";

bool IsMissing(LSTATUS error) { return error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND; }

}  // namespace

bool HasRunKeyValue() {
  DWORD type = 0, bytes = 0;
  constexpr DWORD kTexts = RRF_RT_REG_SZ | RRF_RT_REG_EXPAND_SZ | RRF_NOEXPAND;
  if (RegGetValueW(HKEY_CURRENT_USER, kRunKey, kRunValue, kTexts, &type, nullptr, &bytes) != 0)
    return false;
  std::wstring text(bytes / sizeof(wchar_t) + 1, L'\0');
  bytes = static_cast<DWORD>(text.size() * sizeof(wchar_t));
  return RegGetValueW(HKEY_CURRENT_USER, kRunKey, kRunValue, kTexts, &type, text.data(), &bytes) == 0 &&
         text[0] != L'\0';
}

uint32_t DeleteRunKeyValue() {
  const LSTATUS error = RegDeleteKeyValueW(HKEY_CURRENT_USER, kRunKey, kRunValue);
  return IsMissing(error) ? 0 : static_cast<uint32_t>(error);
}

}  // namespace quilmark
