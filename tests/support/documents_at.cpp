#include "support/documents_at.h"

#ifdef _WIN32

#include <windows.h>

#include <stdexcept>

#include "platform/known_folders.h"
#include "platform/win32/wide.h"

namespace quilmark {

namespace {

constexpr wchar_t kFolders[] =
    L"Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\User Shell Folders";
constexpr wchar_t kDocuments[] = L"Personal";

// Whoever is ended in the middle leaves the documents elsewhere: nothing for a user's own system.
void ExpectWine() {
  if (GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") == nullptr) {
    throw std::runtime_error("the documents of a real system are not moved");
  }
}

std::wstring Place() {
  ExpectWine();
  wchar_t text[MAX_PATH] = {};
  DWORD bytes = sizeof text;
  const LSTATUS got =
      RegGetValueW(HKEY_CURRENT_USER, kFolders, kDocuments,
                   RRF_RT_REG_SZ | RRF_RT_REG_EXPAND_SZ | RRF_NOEXPAND, nullptr, text, &bytes);
  if (got != ERROR_SUCCESS) throw std::runtime_error("no place of the documents");
  return text;
}

bool SetPlace(const std::wstring& path) {
  const auto bytes = static_cast<DWORD>((path.size() + 1) * sizeof(wchar_t));
  return RegSetKeyValueW(HKEY_CURRENT_USER, kFolders, kDocuments, REG_EXPAND_SZ, path.c_str(), bytes) ==
         ERROR_SUCCESS;
}

}  // namespace

DocumentsAt::DocumentsAt(std::u16string_view path) : former_(Place()) {
  ForgetKnownFolders();
  Move(path);
}

DocumentsAt::~DocumentsAt() {
  SetPlace(former_);
  ForgetKnownFolders();
}

void DocumentsAt::Move(std::u16string_view path) {
  if (!SetPlace(Wide(std::u16string(path)))) throw std::runtime_error("the documents stay");
}

}  // namespace quilmark

#endif
