// Links of the host below Wine, which makes none itself: its CreateSymbolicLinkW only says so.
#pragma once

#ifdef _WIN32

#include <string>

namespace quilmark {

// A folder of the temporary folder, by name, with a folder "behind" and a link "link" that leads there;
// its path. Made once and left there: a deletion under Wine would follow the link. Throws without a
// link.
std::u16string FolderWithLink(const std::u16string& name);

}  // namespace quilmark

#endif
