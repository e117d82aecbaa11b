// Files as the clipboard and a drag carry them: the block of CF_HDROP (DROPFILES, shlobj.h).
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace quilmark {

// A header of 20 bytes, then the paths in UTF-16, each with its NUL, and one NUL more. A path that is
// empty or holds a NUL, which would end the list or begin another path, is left out; empty if none is
// left.
std::vector<std::byte> DropFilesBlock(const std::vector<std::u16string>& paths);

}  // namespace quilmark
