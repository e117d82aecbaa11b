// Files and texts on the clipboard, and the memory blocks that carry them.
#pragma once

#include <windows.h>

#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include "shell/actions/shell_port.h"
#include "shell/win32/system/com.h"

namespace quilmark {

// The format in which whoever pastes or takes a drop reads a DropEffect. 0 where the system gives none.
UINT DropEffectFormat();

// A moveable block that holds the bytes. Empty without bytes, and where memory runs out.
[[nodiscard]] UniqueGlobal GlobalBlock(std::span<const std::byte> bytes);

// The block of CF_HDROP. Empty without a path, and where memory runs out.
[[nodiscard]] UniqueGlobal FilesBlock(const std::vector<std::u16string>& paths);

// The block of DropEffectFormat. Empty where memory runs out.
[[nodiscard]] UniqueGlobal EffectBlock(DropEffect effect);

// Replace what the clipboard holds. False where another program has it for longer than a moment, or it
// did not take all: then it is empty.
[[nodiscard]] bool PutTextOnClipboard(HWND owner, const std::u16string& text);
[[nodiscard]] bool PutFilesOnClipboard(HWND owner, const std::vector<std::u16string>& paths,
                                       DropEffect effect);

}  // namespace quilmark
