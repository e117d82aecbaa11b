#include "shell/actions/late_shell.h"

namespace quilmark {

void LateShell::Execute(ShellVerb verb, const std::u16string& path) {
  if (real != nullptr) real->Execute(verb, path);
}

bool LateShell::SelectInFileManager(const std::u16string& path) {
  return real != nullptr && real->SelectInFileManager(path);
}

bool LateShell::CopyText(const std::u16string& text) { return real != nullptr && real->CopyText(text); }

bool LateShell::CopyFiles(const std::vector<std::u16string>& paths, DropEffect effect) {
  return real != nullptr && real->CopyFiles(paths, effect);
}

bool LateShell::DeleteByOperation(const std::u16string& path, Undo undo) {
  return real != nullptr && real->DeleteByOperation(path, undo);
}

bool LateShell::DeleteByOldCall(const std::u16string& path, Undo undo) {
  return real != nullptr && real->DeleteByOldCall(path, undo);
}

bool LateShell::DeleteDirectly(const std::u16string& path) {
  return real != nullptr && real->DeleteDirectly(path);
}

bool LateShell::Ask(const BoxText& question) { return real != nullptr && real->Ask(question); }

void LateShell::Tell(const BoxText& notice) {
  if (real != nullptr) real->Tell(notice);
}

bool LateShell::Drag(const std::vector<std::u16string>& paths) {
  return real != nullptr && real->Drag(paths);
}

void LateShell::ShowSystemMenu(const std::vector<std::u16string>& paths) {
  if (real != nullptr) real->ShowSystemMenu(paths);
}

}  // namespace quilmark
