// Files written in folders that programs with fewer rights may write to as well.
#pragma once

#include <windows.h>

#include <string_view>

#include "platform/win32/file_handle.h"

namespace quilmark {

// Whether a symbolic link or a junction stands on the way from the user's documents, local data or
// temporary folder to the end of `path`, which itself is left out. What leads to those folders is the
// user's own. A name that is there and cannot be asked for counts as a link.
bool IsReachedByLink(std::u16string_view path);

// All that is to be asked before files of one folder are written.
struct WritePlan {
  std::u16string folder;            // as LongPathOf, with a backslash behind it if it is not empty
  bool isRefused = false;           // IsReachedByLink
  bool isShared = false;            // below one of the folders above: files lie in `systemFolders`
  std::u16string systemFolders[2];  // the folder in both forms that the system has of a name
};

// Asks all of that for `folder`.
[[nodiscard]] WritePlan PlanWrites(std::u16string_view folder);

// OpenPath for writing: empty where IsReachedByLink, where the file itself is a symbolic link, and
// where what was opened turns out to lie elsewhere, since names are free to change until then. An
// existing file is as it was, also in its length. Empty for CREATE_ALWAYS, which CreateFileW does not
// take together with FILE_FLAG_OPEN_REPARSE_POINT.
[[nodiscard]] UniqueFile OpenForWriting(std::u16string_view path, DWORD access, DWORD disposition);

// The same for a file of a folder that was planned for: takes no lock and asks for nothing by name.
[[nodiscard]] UniqueFile OpenPlanned(const WritePlan& plan, std::u16string_view name, DWORD access,
                                     DWORD disposition);

}  // namespace quilmark
