#include "shell/win32/system/run_tool.h"

#include "platform/win32/file_handle.h"
#include "platform/win32/wide.h"

namespace quilmark {

std::u16string SystemToolPath(const std::u16string& name) {
  wchar_t folder[MAX_PATH] = {};
  const UINT length = GetSystemDirectoryW(folder, MAX_PATH);
  if (length > 0 && length < MAX_PATH) return std::u16string(FromWide(folder)) + u"\\" + name;
  // A name alone must not be looked for in the current folder: the program may run with all rights.
  SetEnvironmentVariableW(L"NoDefaultCurrentDirectoryInExePath", L"1");
  return name;
}

ToolRun RunTool(const std::u16string& program, const std::vector<std::u16string>& arguments,
                uint32_t mostMs) {
  std::u16string line = CommandLineOf(program, arguments);
  const bool isPath = program.find(u'\\') != std::u16string::npos;
  STARTUPINFOW startup = {};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION process = {};
  const BOOL isStarted =
      CreateProcessW(isPath ? Wide(program) : nullptr, Wide(line.data()), nullptr, nullptr, FALSE,
                     CREATE_NO_WINDOW, nullptr, nullptr, &startup, &process);
  if (!isStarted) return {.hasRun = false, .exitCode = GetLastError()};
  const UniqueKernelObject owned(process.hProcess), thread(process.hThread);
  if (WaitForSingleObject(owned.Get(), mostMs) != WAIT_OBJECT_0) {
    TerminateProcess(owned.Get(), ERROR_TIMEOUT);
    return {.hasRun = false, .exitCode = WAIT_TIMEOUT};
  }
  DWORD exitCode = 0;
  const bool isKnown = GetExitCodeProcess(owned.Get(), &exitCode) != FALSE;
  return {.hasRun = isKnown, .exitCode = isKnown ? exitCode : GetLastError()};
}

}  // namespace quilmark
