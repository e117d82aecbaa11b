// A stand-in for a tool of the system, such as the scheduler's: writes its arguments down, a line each,
// and knows of one task, which is a file beside the log. QUILMARK_TEST_TOOL_LOG names the log,
// QUILMARK_TEST_TOOL_EXIT another exit code than the task's, or "never".
#include <windows.h>

#include <shellapi.h>

#include <cstdio>
#include <cstdlib>
#include <cwchar>
#include <string>

namespace {

void Append(FILE* log, const wchar_t* argument) {
  char bytes[4'096] = {};
  WideCharToMultiByte(CP_UTF8, 0, argument, -1, bytes, sizeof bytes - 1, nullptr, nullptr);
  std::fprintf(log, "%s\n", bytes);
}

int AnswerForTask(const wchar_t* order, const std::string& task) {
  if (std::wcscmp(order, L"/Create") == 0) {
    FILE* const made = std::fopen(task.c_str(), "wb");
    if (made == nullptr) return 1;
    std::fclose(made);
    return 0;
  }
  if (std::wcscmp(order, L"/Delete") == 0) return std::remove(task.c_str()) == 0 ? 0 : 1;
  return GetFileAttributesA(task.c_str()) == INVALID_FILE_ATTRIBUTES ? 1 : 0;
}

}  // namespace

int main() {
  const char* const logPath = std::getenv("QUILMARK_TEST_TOOL_LOG");
  const char* const exit = std::getenv("QUILMARK_TEST_TOOL_EXIT");
  if (logPath == nullptr) return 99;
  int count = 0;
  wchar_t** const arguments = CommandLineToArgvW(GetCommandLineW(), &count);
  FILE* const log = std::fopen(logPath, "ab");
  if (log == nullptr) return 98;
  for (int i = 1; i < count; ++i) Append(log, arguments[i]);
  std::fclose(log);
  if (exit != nullptr && std::string(exit) == "never") Sleep(INFINITE);
  if (exit != nullptr) return std::atoi(exit);
  return count > 1 ? AnswerForTask(arguments[1], std::string(logPath) + ".task") : 0;
}
