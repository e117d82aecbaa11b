// What is done with files by the shell of the system. The program has the system's own; tests write down
// what was asked.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace quilmark {

// What the shell does with a file. Which program does it is the system's choice.
enum class ShellVerb : uint8_t { kOpen, kRunAsAdmin, kProperties };

// Whether a deletion can be taken back: kYes moves into the Recycle Bin where that takes the file.
enum class Undo : uint8_t { kNo, kYes };

// What whoever pastes files is to do with them. The values are those of the clipboard.
enum class DropEffect : uint32_t { kCopy = 1, kMove = 2 };

// What a box says to the user.
struct BoxText {
  std::u16string title, text;

  bool operator==(const BoxText&) const = default;
};

// All calls on the interface thread. Each may hand out messages of the window before it returns, and the
// events that these bring; the clipboard and DeleteDirectly do not.
struct ShellPort {
  virtual ~ShellPort() = default;

  // Has the shell do it, without a message of its own where that fails, which nobody is told.
  virtual void Execute(ShellVerb verb, const std::u16string& path) = 0;

  // Starts the system's file manager, which shows the path selected in its folder. False where the shell
  // says that it could not.
  virtual bool SelectInFileManager(const std::u16string& path) = 0;

  // Replaces what the clipboard holds. False where another program has it, or it did not take all.
  virtual bool CopyText(const std::u16string& text) = 0;
  [[nodiscard]] virtual bool CopyFiles(const std::vector<std::u16string>& paths, DropEffect effect) = 0;

  // The three ways to delete a file, or a folder with all below it, without a question. True if the
  // system says that it is done, and that nobody has broken it off. The first two take some names for
  // others: REQUIRES IsPlainPath, and fewer than 260 units for the old call.
  [[nodiscard]] virtual bool DeleteByOperation(const std::u16string& path, Undo undo) = 0;
  [[nodiscard]] virtual bool DeleteByOldCall(const std::u16string& path, Undo undo) = 0;
  // For good, as DeleteEntry does it: no folder that holds anything.
  [[nodiscard]] virtual bool DeleteDirectly(const std::u16string& path) = 0;

  // Shows a warning with a question. True for Yes.
  [[nodiscard]] virtual bool Ask(const BoxText& question) = 0;

  // Shows an information.
  virtual void Tell(const BoxText& notice) = 0;

  // Drags the files until the mouse lets them go; they can be copied alone. False where no drag came
  // about.
  virtual bool Drag(const std::vector<std::u16string>& paths) = 0;

  // Opens the system's own menu at the mouse for files of one folder, and has the choice done.
  virtual void ShowSystemMenu(const std::vector<std::u16string>& paths) = 0;
};

}  // namespace quilmark
