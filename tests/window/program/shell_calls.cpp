// What the program under test asks the shell to start. Where QUILMARK_TEST_SHELL_LOG names a file, a
// call is a line of it: verb, file, arguments and folder, with tabs between. Of these only files of the
// tests' drive are really opened: Wine has no program for the others, or one that never ends.
#include <windows.h>

#include <shellapi.h>

#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

// Writes the call down. False where nobody wants to know of it.
bool IsWrittenDown(const wchar_t* verb, const wchar_t* file, const wchar_t* arguments,
                   const wchar_t* folder) {
  const wchar_t* const path = _wgetenv(L"QUILMARK_TEST_SHELL_LOG");
  if (path == nullptr) return false;
  std::wstring line;
  for (const wchar_t* part : {verb, file, arguments, folder}) {
    if (part != verb) line += L'\t';
    if (part != nullptr) line += part;
  }
  line += L'\n';
  std::string bytes(line.size() * 3, '\0');
  const int size = WideCharToMultiByte(CP_UTF8, 0, line.data(), static_cast<int>(line.size()),
                                       bytes.data(), static_cast<int>(bytes.size()), nullptr, nullptr);
  FILE* const log = _wfopen(path, L"ab");
  if (log == nullptr) return true;
  std::fwrite(bytes.data(), 1, static_cast<size_t>(size), log);
  std::fclose(log);
  return true;
}

bool IsProgram(const wchar_t* file) {
  const std::wstring name = file;
  return name.ends_with(L".exe") && !name.ends_with(L"explorer.exe");
}

}  // namespace

extern "C" decltype(&ShellExecuteExW) __real___imp_ShellExecuteExW;
static BOOL WINAPI WrittenShellExecuteExW(SHELLEXECUTEINFOW* info) {
  const bool isWritten =
      IsWrittenDown(info->lpVerb, info->lpFile, info->lpParameters, info->lpDirectory);
  if (isWritten && !IsProgram(info->lpFile)) return TRUE;
  return __real___imp_ShellExecuteExW(info);
}

extern "C" decltype(&ShellExecuteW) __real___imp_ShellExecuteW;
static HINSTANCE WINAPI WrittenShellExecuteW(HWND owner, LPCWSTR verb, LPCWSTR file, LPCWSTR arguments,
                                             LPCWSTR folder, INT show) {
  if (IsWrittenDown(verb, file, arguments, folder)) return reinterpret_cast<HINSTANCE>(INT_PTR{33});
  return __real___imp_ShellExecuteW(owner, verb, file, arguments, folder, show);
}

extern "C" {
extern decltype(&ShellExecuteExW) __wrap___imp_ShellExecuteExW;
decltype(&ShellExecuteExW) __wrap___imp_ShellExecuteExW = WrittenShellExecuteExW;
extern decltype(&ShellExecuteW) __wrap___imp_ShellExecuteW;
decltype(&ShellExecuteW) __wrap___imp_ShellExecuteW = WrittenShellExecuteW;
}
