#include "shell/win32/system/system_shell.h"

#include "platform/drives.h"
#include "platform/win32/wide.h"
#include "shell/actions/shell_paths.h"
#include "shell/win32/system/clipboard_files.h"
#include "shell/win32/system/file_drag.h"
#include "shell/win32/system/file_operations.h"
#include "shell/win32/system/system_menu.h"

namespace quilmark {

namespace {

// Other programs know nothing of the drives that were given to this one by hand.
std::vector<std::u16string> Resolved(const std::vector<std::u16string>& paths) {
  std::vector<std::u16string> resolved;
  for (const std::u16string& path : paths) resolved.push_back(ResolveMappedPath(path));
  return resolved;
}

}  // namespace

void SystemShell::Execute(ShellVerb verb, const std::u16string& path) {
  ExecuteVerb(owner_, verb, ResolveMappedPath(path));
}

bool SystemShell::SelectInFileManager(const std::u16string& path) {
  return StartExplorer(owner_, SelectArguments(ResolveMappedPath(path)));
}

bool SystemShell::CopyText(const std::u16string& text) { return PutTextOnClipboard(owner_, text); }

bool SystemShell::CopyFiles(const std::vector<std::u16string>& paths, DropEffect effect) {
  return PutFilesOnClipboard(owner_, Resolved(paths), effect);
}

bool SystemShell::DeleteByOperation(const std::u16string& path, Undo undo) {
  return DeleteByFileOperation(ResolveMappedPath(path), undo);
}

bool SystemShell::DeleteByOldCall(const std::u16string& path, Undo undo) {
  return DeleteByShellCall(owner_, ResolveMappedPath(path), undo);
}

bool SystemShell::DeleteDirectly(const std::u16string& path) { return DeleteByFileCalls(path); }

bool SystemShell::Ask(const BoxText& question) {
  return MessageBoxW(owner_, Wide(question.text), Wide(question.title), MB_YESNO | MB_ICONWARNING) ==
         IDYES;
}

void SystemShell::Tell(const BoxText& notice) {
  MessageBoxW(owner_, Wide(notice.text), Wide(notice.title), MB_OK | MB_ICONINFORMATION);
}

bool SystemShell::Drag(const std::vector<std::u16string>& paths) { return DragFiles(Resolved(paths)); }

void SystemShell::ShowSystemMenu(const std::vector<std::u16string>& paths) {
  POINT at = {};
  GetCursorPos(&at);
  OpenSystemMenu(owner_, at, Resolved(paths));
}

}  // namespace quilmark
