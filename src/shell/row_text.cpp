#include "shell/row_text.h"

#include "index/volume_index.h"

namespace quilmark {

RowText TextOfRow(const MatchItem& item) {
  if (item.volume == nullptr) return {};
  const std::u16string path = BuildPathLocked(*item.volume, item.index);
  const size_t slash = path.rfind(u'\\');
  if (slash == std::u16string::npos) return {.name = path};
  // The root keeps its backslash: "C:" alone would be another folder.
  const size_t folderEnd = slash == 2 ? 3 : slash;
  return {.name = path.substr(slash + 1), .folder = path.substr(0, folderEnd)};
}

}  // namespace quilmark
