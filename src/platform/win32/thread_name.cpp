#include "platform/thread_name.h"

#include <windows.h>

#include <string>

#include "platform/utf.h"
#include "platform/win32/wide.h"

namespace quilmark {

void NameThisThread(const char* name) {
  // Absent from early releases of Windows 10, so it is looked up.
  using SetDescription = HRESULT(WINAPI*)(HANDLE, PCWSTR);
  static const auto setDescription = reinterpret_cast<SetDescription>(reinterpret_cast<void*>(
      GetProcAddress(GetModuleHandleW(L"kernel32.dll"), "SetThreadDescription")));
  if (setDescription != nullptr) setDescription(GetCurrentThread(), Wide(FromUtf8(name)));
}

}  // namespace quilmark
