#include "driver/open_gate.h"

#include <cwchar>

// Where the linker keeps the address that every call of CreateFileW in this program goes to.
extern "C" decltype(&CreateFileW) __imp_CreateFileW;

namespace quilmark {

namespace {

decltype(&CreateFileW) systemOpen;
DWORD deniedAccess;
std::vector<OpenCall> calls;

HANDLE WINAPI OpenThroughGate(LPCWSTR path, DWORD access, DWORD share, LPSECURITY_ATTRIBUTES security,
                              DWORD disposition, DWORD flags, HANDLE pattern) {
  if (std::wcscmp(path, L"\\\\.\\N:") == 0) {
    calls.push_back({access, share, disposition, flags});
    if ((access & deniedAccess) != 0) {
      SetLastError(ERROR_ACCESS_DENIED);
      return INVALID_HANDLE_VALUE;
    }
  }
  return systemOpen(path, access, share, security, disposition, flags, pattern);
}

void SendOpensTo(decltype(&CreateFileW) function) {
  DWORD protection = 0;
  VirtualProtect(&__imp_CreateFileW, sizeof function, PAGE_READWRITE, &protection);
  __imp_CreateFileW = function;
  VirtualProtect(&__imp_CreateFileW, sizeof function, protection, &protection);
}

}  // namespace

OpenGate::OpenGate(DWORD denied) {
  systemOpen = __imp_CreateFileW;
  deniedAccess = denied;
  calls.clear();
  SendOpensTo(OpenThroughGate);
}

OpenGate::~OpenGate() { SendOpensTo(systemOpen); }

const std::vector<OpenCall>& OpenGate::Calls() const { return calls; }

}  // namespace quilmark
