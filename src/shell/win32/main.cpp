#include "shell/win32/quilmark.h"

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, wchar_t* commandLine, int showCommand) {
  return quilmark::RunQuilmark(instance, commandLine, showCommand);
}
