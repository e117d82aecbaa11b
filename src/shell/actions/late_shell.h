// The system's shell for code that is made before the window is.
#pragma once

#include "shell/actions/shell_port.h"

namespace quilmark {

// Hands each call on to `real`; without one nothing is done, and what can fail has failed.
struct LateShell final : ShellPort {
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

  ShellPort* real = nullptr;  // outlives this, or is taken out again
};

}  // namespace quilmark
