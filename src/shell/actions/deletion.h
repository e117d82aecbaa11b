// Deleting files: three ways, tried one after another. Interface thread.
#pragma once

#include <string>
#include <vector>

#include "shell/actions/shell_port.h"

namespace quilmark {

// Moves the file into the Recycle Bin, or a folder with all below it; what that refuses is deleted for
// good. True if the system says that one of the ways has done it.
[[nodiscard]] bool RecycleOrDelete(ShellPort& shell, const std::u16string& path);

// The same without the Recycle Bin.
[[nodiscard]] bool DeletePermanently(ShellPort& shell, const std::u16string& path);

// What became of several files.
struct [[nodiscard]] DeletionOutcome {
  std::vector<bool> isDone;  // of each, in their order
  size_t failures = 0;
};

// RecycleOrDelete (Undo::kYes) or DeletePermanently of each. What has gone with a folder that was
// deleted before it is done. Ends with the program: the rest is neither done nor a failure.
DeletionOutcome DeleteAll(ShellPort& shell, const std::vector<std::u16string>& paths, Undo undo);

// A file or folder by path, as the last of the three ways asks for it. A link is meant, never what it
// leads to.
struct EntryCalls {
  virtual ~EntryCalls() = default;

  // Attributes of the system. kNoAttributes where there is none, or it cannot be asked.
  virtual uint32_t AttributesOf(const std::u16string& path) = 0;
  virtual bool SetAttributes(const std::u16string& path, uint32_t attributes) = 0;

  // The other paths of the same file, which share its attributes; none where the system does not say.
  virtual std::vector<std::u16string> OtherNamesOf(const std::u16string& path) = 0;

  // Removes an empty folder or a link that is a folder, and a file or any other link. False if it is
  // still there.
  [[nodiscard]] virtual bool RemoveFolder(const std::u16string& path) = 0;
  [[nodiscard]] virtual bool RemoveFile(const std::u16string& path) = 0;
};

inline constexpr uint32_t kNoAttributes = 0xFFFF'FFFF;
inline constexpr uint32_t kReadOnlyAttribute = 1, kHiddenAttribute = 2, kSystemAttribute = 4,
                          kFolderAttribute = 16, kNormalAttribute = 128, kLinkAttribute = 0x400;

// Deletes the entry for good, whatever its attributes; a file that has another name, or cannot be
// deleted, gets them back.
// False for a folder that holds anything, and for a path that is not IsDeletablePath.
[[nodiscard]] bool DeleteEntry(EntryCalls& calls, const std::u16string& path);

}  // namespace quilmark
