#include "platform/win32/system_function.h"

namespace quilmark {

void HardenLibrarySearch() {
  SetDllDirectoryW(L"");
  SetDefaultDllDirectories(LOAD_LIBRARY_SEARCH_SYSTEM32);
}

FARPROC SystemFunction(const wchar_t* library, const char* name) {
  HMODULE module = GetModuleHandleW(library);  // a further load would only be counted
  if (module == nullptr) module = LoadLibraryExW(library, nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
  return module == nullptr ? nullptr : GetProcAddress(module, name);
}

}  // namespace quilmark
