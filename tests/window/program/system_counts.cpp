// The linker leads the calls of our own code here (--wrap in cmake/tests.cmake). A call goes through a
// pointer of the import table, __imp_x: __wrap___imp_x is ours, __real___imp_x the table's.
#include "window/program/system_counts.h"

#include <process.h>
#include <windows.h>

#include <psapi.h>

#include <algorithm>
#include <string>

namespace quilmark {

SystemCounts& CountsOfSystem() {
  static SystemCounts counts;
  return counts;
}

}  // namespace quilmark

#define QUILMARK_COUNT(type, convention, name, parameters, arguments, counter) \
  extern "C" decltype(&name) __real___imp_##name;                              \
  static type convention Counted##name parameters {                            \
    ++quilmark::CountsOfSystem().counter;                                      \
    return __real___imp_##name arguments;                                      \
  }                                                                            \
  extern "C" {                                                                 \
  extern decltype(&name) __wrap___imp_##name;                                  \
  decltype(&name) __wrap___imp_##name = Counted##name;                         \
  }

QUILMARK_COUNT(uintptr_t, __cdecl, _beginthreadex,
               (void* security, unsigned stack, unsigned(__stdcall* start)(void*), void* argument,
                unsigned flags, unsigned* id),
               (security, stack, start, argument, flags, id), threads)
QUILMARK_COUNT(HANDLE, WINAPI, CreateFileW,
               (LPCWSTR path, DWORD access, DWORD share, LPSECURITY_ATTRIBUTES security, DWORD creation,
                DWORD flags, HANDLE model),
               (path, access, share, security, creation, flags, model), reads)
extern "C" decltype(&FindFirstFileExW) __real___imp_FindFirstFileExW;
static HANDLE WINAPI CountedFindFirstFileExW(LPCWSTR path, FINDEX_INFO_LEVELS level, LPVOID found,
                                             FINDEX_SEARCH_OPS operation, LPVOID filter, DWORD flags) {
  ++quilmark::CountsOfSystem().reads;
  if (quilmark::CountsOfSystem().refusesNames) {
    SetLastError(ERROR_ACCESS_DENIED);
    return INVALID_HANDLE_VALUE;
  }
  return __real___imp_FindFirstFileExW(path, level, found, operation, filter, flags);
}
extern "C" {
extern decltype(&FindFirstFileExW) __wrap___imp_FindFirstFileExW;
decltype(&FindFirstFileExW) __wrap___imp_FindFirstFileExW = CountedFindFirstFileExW;
}
QUILMARK_COUNT(BOOL, WINAPI, ReadFile,
               (HANDLE file, LPVOID to, DWORD size, LPDWORD got, LPOVERLAPPED at),
               (file, to, size, got, at), reads)
// The watcher asks for the folder of each drive every two seconds, as it must.
static bool IsFolderOfDrive(const wchar_t* path) {
  static const std::wstring drives = [] {
    std::wstring text(32'768, L'\0');
    text.resize(GetEnvironmentVariableW(L"QUILMARK_TEST_DRIVES", text.data(), 32'768));
    std::replace(text.begin(), text.end(), L'/', L'\\');
    return text;
  }();
  std::wstring plain = path;
  if (plain.starts_with(LR"(\\?\)")) plain.erase(0, 4);
  std::replace(plain.begin(), plain.end(), L'/', L'\\');
  return drives.find(L"=" + plain + L";") != std::wstring::npos || drives.ends_with(L"=" + plain);
}

extern "C" decltype(&GetFileAttributesW) __real___imp_GetFileAttributesW;
static DWORD WINAPI CountedGetFileAttributesW(LPCWSTR path) {
  if (!IsFolderOfDrive(path)) ++quilmark::CountsOfSystem().reads;
  return __real___imp_GetFileAttributesW(path);
}
extern "C" {
extern decltype(&GetFileAttributesW) __wrap___imp_GetFileAttributesW;
decltype(&GetFileAttributesW) __wrap___imp_GetFileAttributesW = CountedGetFileAttributesW;
}

QUILMARK_COUNT(BOOL, WINAPI, GetFileAttributesExW,
               (LPCWSTR path, GET_FILEEX_INFO_LEVELS level, LPVOID facts), (path, level, facts), reads)
QUILMARK_COUNT(BOOL, WINAPI, WriteFile,
               (HANDLE file, LPCVOID from, DWORD size, LPDWORD written, LPOVERLAPPED at),
               (file, from, size, written, at), writes)

static std::atomic<int64_t>& TrimsOf(HANDLE process) {
  const bool isOwn = GetProcessId(process) == GetCurrentProcessId();
  return isOwn ? quilmark::CountsOfSystem().ownTrims : quilmark::CountsOfSystem().otherTrims;
}

// Empties a working set by its limits; the one behind it by name.
extern "C" decltype(&SetProcessWorkingSetSize) __real___imp_SetProcessWorkingSetSize;
static thread_local bool hasShrunk = false;
static BOOL WINAPI CountedSetProcessWorkingSetSize(HANDLE process, SIZE_T least, SIZE_T most) {
  const BOOL result = __real___imp_SetProcessWorkingSetSize(process, least, most);
  hasShrunk = result != FALSE && least == SIZE_MAX && most == SIZE_MAX;
  return result;
}
extern "C" BOOL WINAPI __real_K32EmptyWorkingSet(HANDLE process);
extern "C" BOOL WINAPI __wrap_K32EmptyWorkingSet(HANDLE process) {
  const BOOL result = __real_K32EmptyWorkingSet(process);
  if (result && hasShrunk) ++TrimsOf(process);
  hasShrunk = false;
  return result;
}
extern "C" {
extern decltype(&SetProcessWorkingSetSize) __wrap___imp_SetProcessWorkingSetSize;
decltype(&SetProcessWorkingSetSize) __wrap___imp_SetProcessWorkingSetSize =
    CountedSetProcessWorkingSetSize;
}

#undef QUILMARK_COUNT
