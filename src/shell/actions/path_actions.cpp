#include "shell/actions/path_actions.h"

#include "shell/actions/shell_paths.h"

namespace quilmark {

void ShowInFileManager(ShellPort& shell, const std::u16string& path) {
  if (!IsShellPath(path) || shell.SelectInFileManager(path)) return;
  shell.Execute(ShellVerb::kOpen, ParentOfPath(path).value_or(path));
}

bool CopyPathToClipboard(ShellPort& shell, const std::u16string& path) { return shell.CopyText(path); }

void ShowProperties(ShellPort& shell, const std::u16string& path) {
  if (IsShellPath(path)) shell.Execute(ShellVerb::kProperties, path);
}

}  // namespace quilmark
