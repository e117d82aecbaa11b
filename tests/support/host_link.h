// Links of the host below Wine, which makes none itself: its CreateSymbolicLinkW only says so.
#pragma once

#ifdef _WIN32

#include <cstdint>
#include <string>

namespace quilmark {

// A folder of the temporary folder, by name, with a folder "behind" and a link that leads to `target`,
// from within it; its path. No blanks. Made once and left there: a deletion under Wine would follow the
// link. Throws without a link.
std::u16string FolderWithLink(const std::u16string& name, const std::u16string& link = u"link",
                              const std::u16string& target = u"behind");

// While it lives, such links are told of as NTFS tells of junctions: Wine gives them the attribute of a
// reparse point and no tag. One at a time.
class LinksAsJunctions {
 public:
  LinksAsJunctions();
  ~LinksAsJunctions();
  LinksAsJunctions(const LinksAsJunctions&) = delete;
  LinksAsJunctions& operator=(const LinksAsJunctions&) = delete;
};

// While it lives, each open file tells of itself as a reparse point of this tag: Wine has none. One at a
// time.
class FilesTagged {
 public:
  explicit FilesTagged(uint32_t tag);
  ~FilesTagged();
  FilesTagged(const FilesTagged&) = delete;
  FilesTagged& operator=(const FilesTagged&) = delete;
};

// What the wrapped calls ask.
bool LinksAreJunctions();
uint32_t TagOfFiles();  // 0: their own

}  // namespace quilmark

#endif
