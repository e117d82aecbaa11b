// The wrapped calls of Windows. A call goes through a pointer of the import table, __imp_x; --wrap makes
// __wrap___imp_x of it in the program, and __real___imp_x is the table's own.
#ifdef _WIN32

#include <windows.h>

#include <cstddef>

#include "support/host_link.h"
#include "support/system_faults.h"

using quilmark::SystemFaultSwitch;
using Verdict = SystemFaultSwitch::Verdict;

static std::ptrdiff_t NumberOf(HANDLE handle) { return reinterpret_cast<std::ptrdiff_t>(handle); }

// Defines the pointer that calls of `name` go through, and the function behind it up to its body.
#define QUILMARK_WRAP(type, name, parameters)          \
  extern "C" decltype(&name) __real___imp_##name;      \
  static type WINAPI Wrapped##name parameters;         \
  extern "C" {                                         \
  extern decltype(&name) __wrap___imp_##name;          \
  decltype(&name) __wrap___imp_##name = Wrapped##name; \
  }                                                    \
  static type WINAPI Wrapped##name parameters

// Calls that fail whole.
#define QUILMARK_WRAP_WHOLE(type, name, parameters, arguments, error, failed)                  \
  QUILMARK_WRAP(type, name, parameters) {                                                      \
    if (SystemFaultSwitch::Ask(#name) == Verdict::kPass) return __real___imp_##name arguments; \
    SetLastError(error);                                                                       \
    return failed;                                                                             \
  }

QUILMARK_WRAP_WHOLE(BOOL, SetFilePointerEx,
                    (HANDLE file, LARGE_INTEGER place, LARGE_INTEGER* now, DWORD from),
                    (file, place, now, from), ERROR_SEEK, FALSE)
QUILMARK_WRAP_WHOLE(BOOL, SetFileInformationByHandle,
                    (HANDLE file, FILE_INFO_BY_HANDLE_CLASS kind, LPVOID facts, DWORD size),
                    (file, kind, facts, size), ERROR_WRITE_FAULT, FALSE)
QUILMARK_WRAP_WHOLE(BOOL, FlushFileBuffers, (HANDLE file), (file), ERROR_WRITE_FAULT, FALSE)
QUILMARK_WRAP_WHOLE(BOOL, GetFileSizeEx, (HANDLE file, LARGE_INTEGER* size), (file, size),
                    ERROR_READ_FAULT, FALSE)
QUILMARK_WRAP_WHOLE(DWORD, GetFileAttributesW, (LPCWSTR path), (path), ERROR_SHARING_VIOLATION,
                    INVALID_FILE_ATTRIBUTES)
QUILMARK_WRAP_WHOLE(BOOL, GetFileAttributesExW,
                    (LPCWSTR path, GET_FILEEX_INFO_LEVELS level, LPVOID facts), (path, level, facts),
                    ERROR_SHARING_VIOLATION, FALSE)
QUILMARK_WRAP_WHOLE(BOOL, CreateDirectoryW, (LPCWSTR path, LPSECURITY_ATTRIBUTES security),
                    (path, security), ERROR_DISK_FULL, FALSE)
QUILMARK_WRAP_WHOLE(BOOL, DeleteFileW, (LPCWSTR path), (path), ERROR_ACCESS_DENIED, FALSE)
QUILMARK_WRAP_WHOLE(BOOL, DeviceIoControl,
                    (HANDLE device, DWORD code, LPVOID input, DWORD inputSize, LPVOID output,
                     DWORD outputSize, LPDWORD bytes, LPOVERLAPPED at),
                    (device, code, input, inputSize, output, outputSize, bytes, at), ERROR_READ_FAULT,
                    FALSE)

QUILMARK_WRAP(BOOL, ReadFile, (HANDLE file, LPVOID to, DWORD size, LPDWORD got, LPOVERLAPPED at)) {
  const Verdict verdict = SystemFaultSwitch::Ask("ReadFile");
  if (verdict == Verdict::kPass) return __real___imp_ReadFile(file, to, size, got, at);
  if (verdict == Verdict::kHalf && size > 1) return __real___imp_ReadFile(file, to, size / 2, got, at);
  SetLastError(ERROR_READ_FAULT);
  return FALSE;
}

QUILMARK_WRAP(BOOL, WriteFile,
              (HANDLE file, LPCVOID from, DWORD size, LPDWORD written, LPOVERLAPPED at)) {
  const Verdict verdict = SystemFaultSwitch::Ask("WriteFile", SystemFaultSwitch::Moves::kWrites);
  if (verdict == Verdict::kPass) return __real___imp_WriteFile(file, from, size, written, at);
  if (verdict == Verdict::kHalf && size > 1)
    return __real___imp_WriteFile(file, from, size / 2, written, at);
  SetLastError(ERROR_DISK_FULL);
  return FALSE;
}

QUILMARK_WRAP(HANDLE, CreateFileW,
              (LPCWSTR path, DWORD access, DWORD share, LPSECURITY_ATTRIBUTES security,
               DWORD disposition, DWORD flags, HANDLE like)) {
  if (SystemFaultSwitch::Ask("CreateFileW") != Verdict::kPass) {
    SetLastError(ERROR_SHARING_VIOLATION);
    return INVALID_HANDLE_VALUE;
  }
  const HANDLE file = __real___imp_CreateFileW(path, access, share, security, disposition, flags, like);
  if (file != INVALID_HANDLE_VALUE) SystemFaultSwitch::Opened(NumberOf(file));
  return file;
}

static void TagLink(WIN32_FIND_DATAW& found) {
  const bool isLink = (found.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
  if (isLink && found.dwReserved0 == 0 && quilmark::LinksAreJunctions()) {
    found.dwReserved0 = IO_REPARSE_TAG_MOUNT_POINT;
  }
}

QUILMARK_WRAP(BOOL, FindNextFileW, (HANDLE find, LPWIN32_FIND_DATAW found)) {
  if (SystemFaultSwitch::Ask("FindNextFileW") != Verdict::kPass) {
    SetLastError(ERROR_READ_FAULT);
    return FALSE;
  }
  if (!__real___imp_FindNextFileW(find, found)) return FALSE;
  TagLink(*found);
  return TRUE;
}

QUILMARK_WRAP(HANDLE, FindFirstFileExW,
              (LPCWSTR path, FINDEX_INFO_LEVELS level, LPVOID found, FINDEX_SEARCH_OPS kind,
               LPVOID filter, DWORD flags)) {
  if (SystemFaultSwitch::Ask("FindFirstFileExW") != Verdict::kPass) {
    SetLastError(ERROR_ACCESS_DENIED);
    return INVALID_HANDLE_VALUE;
  }
  const HANDLE find = __real___imp_FindFirstFileExW(path, level, found, kind, filter, flags);
  if (find == INVALID_HANDLE_VALUE) return find;
  TagLink(*static_cast<WIN32_FIND_DATAW*>(found));
  SystemFaultSwitch::Opened(NumberOf(find));
  return find;
}

QUILMARK_WRAP(BOOL, GetFileInformationByHandleEx,
              (HANDLE file, FILE_INFO_BY_HANDLE_CLASS kind, LPVOID facts, DWORD size)) {
  if (!__real___imp_GetFileInformationByHandleEx(file, kind, facts, size)) return FALSE;
  const uint32_t tag = quilmark::TagOfFiles();
  if (kind == FileAttributeTagInfo && tag != 0) {
    *static_cast<FILE_ATTRIBUTE_TAG_INFO*>(facts) = {FILE_ATTRIBUTE_REPARSE_POINT, tag};
  }
  return TRUE;
}

QUILMARK_WRAP(BOOL, FindClose, (HANDLE find)) {
  SystemFaultSwitch::Closed(NumberOf(find));
  return __real___imp_FindClose(find);
}

QUILMARK_WRAP(BOOL, CloseHandle, (HANDLE handle)) {
  SystemFaultSwitch::Closed(NumberOf(handle));
  return __real___imp_CloseHandle(handle);
}

#undef QUILMARK_WRAP
#undef QUILMARK_WRAP_WHOLE

extern "C" {
extern const int quilmark_wrapped_calls;
const int quilmark_wrapped_calls = 1;
}

#endif
