#include <windows.h>

#include "shell/win32/window/quilmark.h"

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, wchar_t* commandLine, int showCommand) {
  const int code = quilmark::RunQuilmark(instance, commandLine, showCommand);
  // A job that waits for a slow disk may still run, and what it uses must outlive it.
  ExitProcess(static_cast<UINT>(code));
}
