// Files that are dragged out of the window. Interface thread.
#pragma once

#include <windows.h>

#include <objidl.h>
#include <oleidl.h>

#include <string>
#include <vector>

#include "shell/win32/system/com.h"

namespace quilmark {

// What a drop reads: the files, and that they are to be copied.
[[nodiscard]] UniqueCom<IDataObject> MakeFileData(std::vector<std::u16string> paths);

// Drops where the left button is let go; Escape ends the drag.
[[nodiscard]] UniqueCom<IDropSource> MakeFileDropSource();

// Drags the files until the mouse lets them go. They can be copied and never moved. False where no drag
// came about. Hands out messages meanwhile.
bool DragFiles(const std::vector<std::u16string>& paths);

}  // namespace quilmark
