#include "platform/console.h"

#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <iterator>
#include <string>

#include "platform/utf.h"
#include "platform/win32/wide.h"

namespace quilmark {

static constexpr char16_t kEndOfInput = 0x1A;  // Ctrl+Z

static UINT formerCodePage = 0;
static std::atomic<void (*)()> interruptHandler = nullptr;

static BOOL WINAPI HandleControl(DWORD event) {
  if (event != CTRL_C_EVENT) return FALSE;
  void (*const interrupt)() = interruptHandler.exchange(nullptr);
  if (interrupt == nullptr) return FALSE;  // the second time
  interrupt();
  return TRUE;
}

bool IsTerminal(std::FILE* stream) { return _isatty(_fileno(stream)) != 0; }

// The runtime knows one of the system's two errors for it, and calls the other an argument.
bool IsReaderGone(std::FILE* stream, int error) {
  if (error == EPIPE) return true;
  const auto handle = reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(stream)));
  return error == EINVAL && GetFileType(handle) == FILE_TYPE_PIPE;
}

void PrepareConsole() {
  _setmode(_fileno(stdout), _O_BINARY);
  formerCodePage = GetConsoleOutputCP();  // 0 without a console
  if (formerCodePage == 0) return;
  SetConsoleOutputCP(CP_UTF8);
  std::atexit([] { SetConsoleOutputCP(formerCodePage); });
}

void OnInterrupt(void (*interrupt)()) {
  interruptHandler = interrupt;
  SetConsoleCtrlHandler(HandleControl, TRUE);
}

// Bytes of a terminal come in a code page of the past; its UTF-16 is complete.
std::optional<std::string> ReadInputLine() {
  if (!IsTerminal(stdin)) return ReadStreamLine(stdin);
  std::u16string line;
  while (!line.ends_with(u'\n')) {
    wchar_t piece[256];
    DWORD length = 0;
    const BOOL isRead =
        ReadConsoleW(GetStdHandle(STD_INPUT_HANDLE), piece, std::size(piece), &length, nullptr);
    if (!isRead || length == 0) return std::nullopt;
    line += FromWide({piece, length});
  }
  while (line.ends_with(u'\n') || line.ends_with(u'\r')) line.pop_back();
  if (line.starts_with(kEndOfInput)) return std::nullopt;
  return ToUtf8(line);
}

bool HasSystemDrives() { return true; }

}  // namespace quilmark
