// The shell of the system behind a ShellPort.
#pragma once

#include <windows.h>

#include "shell/actions/shell_port.h"

namespace quilmark {

// What it shows belongs to one window of the program. Interface thread.
class SystemShell final : public ShellPort {
 public:
  // From here on, what is shown has the window for its owner; nobody is the owner before.
  void Open(HWND owner) { owner_ = owner; }

  void Execute(ShellVerb verb, const std::u16string& path) override;
  bool SelectInFileManager(const std::u16string& path) override;
  bool CopyText(const std::u16string& text) override;
  bool CopyFiles(const std::vector<std::u16string>& paths, DropEffect effect) override;
  bool DeleteByOperation(const std::u16string& path, Undo undo) override;
  bool DeleteByOldCall(const std::u16string& path, Undo undo) override;
  bool DeleteDirectly(const std::u16string& path) override;
  bool Ask(const BoxText& question) override;
  void Tell(const BoxText& notice) override;
  bool Drag(const std::vector<std::u16string>& paths) override;
  void ShowSystemMenu(const std::vector<std::u16string>& paths) override;

 private:
  HWND owner_ = nullptr;
};

}  // namespace quilmark
