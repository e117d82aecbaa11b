#include "platform/console.h"

#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <atomic>

namespace quilmark {

static std::atomic<void (*)()> interruptHandler = nullptr;

static BOOL WINAPI HandleControl(DWORD event) {
  if (event != CTRL_C_EVENT) return FALSE;
  void (*const interrupt)() = interruptHandler.exchange(nullptr);
  if (interrupt == nullptr) return FALSE;  // the second time
  interrupt();
  return TRUE;
}

bool IsTerminal(std::FILE* stream) { return _isatty(_fileno(stream)) != 0; }

void PrepareConsole() {
  _setmode(_fileno(stdout), _O_BINARY);
  SetConsoleOutputCP(CP_UTF8);
}

void OnInterrupt(void (*interrupt)()) {
  interruptHandler = interrupt;
  SetConsoleCtrlHandler(HandleControl, TRUE);
}

bool HasSystemDrives() { return true; }

}  // namespace quilmark
