// Files opened by a path of files.h.
#pragma once

#include <windows.h>

#include <string>
#include <string_view>

#include "platform/win32/unique.h"

namespace quilmark {

// Files, folders and devices of CreateFileW.
struct FileTraits {
  using Value = HANDLE;
  static Value Empty() { return INVALID_HANDLE_VALUE; }
  static void Close(Value file) { CloseHandle(file); }
};
using UniqueFile = Unique<FileTraits>;

// What the system gives null for where it fails: processes, threads, mutexes.
struct KernelObjectTraits {
  using Value = HANDLE;
  static Value Empty() { return nullptr; }
  static void Close(Value object) { CloseHandle(object); }
};
using UniqueKernelObject = Unique<KernelObjectTraits>;

// Listings of FindFirstFileExW.
struct FindTraits {
  using Value = HANDLE;
  static Value Empty() { return INVALID_HANDLE_VALUE; }
  static void Close(Value find) { FindClose(find); }
};
using UniqueFind = Unique<FindTraits>;

// `path` with its drive resolved, in the form that has no limit of 260 characters where there is one
// ("\\?\"). Empty, which no call takes, for a path that holds a NUL.
std::u16string LongPathOf(std::u16string_view path);

// Attributes and reparse tag are those of a symbolic link or a junction, which lead to another name.
// Other reparse points, as those of cloud, packed or deduplicated content, are the file itself.
bool IsNameSurrogate(DWORD attributes, DWORD tag);

// Begins a listing of what `pattern`, a name of LongPathOf, names, with the first find in `found`.
// Empty, with GetLastError() set, if nothing is found or the folder cannot be asked.
[[nodiscard]] UniqueFind FindFirst(const std::u16string& pattern, WIN32_FIND_DATAW& found,
                                   DWORD flags = 0);

// Sharing everything with others; empty, with GetLastError() set, on failure.
[[nodiscard]] UniqueFile OpenPath(std::u16string_view path, DWORD access, DWORD disposition,
                                  DWORD flags = 0);

// The same by a name of LongPathOf: takes no lock.
[[nodiscard]] UniqueFile OpenLongPath(const std::u16string& longPath, DWORD access, DWORD disposition,
                                      DWORD flags);

// An existing folder, for questions about it.
[[nodiscard]] UniqueFile OpenFolder(std::u16string_view path);

}  // namespace quilmark
