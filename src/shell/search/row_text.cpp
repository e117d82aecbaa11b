#include "shell/search/row_text.h"

#include "search/results/glance.h"
#include "search/results/search_session.h"

namespace quilmark {

namespace {

RowText SplitPath(const std::u16string& path) {
  const size_t slash = path.rfind(u'\\');
  if (slash == std::u16string::npos) return {.name = path};
  // The root keeps its backslash: "C:" alone would be another folder.
  const size_t folderEnd = slash == 2 ? 3 : slash;
  return {.name = path.substr(slash + 1), .folder = path.substr(0, folderEnd)};
}

}  // namespace

RowText TextOfRow(const MatchItem& hit) {
  if (hit.volume == nullptr) return {};
  const auto lock = LockForGlance(*hit.volume);
  if (!lock) return {.isLater = IsSearchable(*hit.volume)};
  if (hit.index >= hit.volume->records.size()) return {};
  RowText row = SplitPath(BuildPath(*hit.volume, hit.index));
  const FileRecord& record = hit.volume->records[hit.index];
  row.isDirectory = record.isDirectory != 0;
  row.isDeleted = record.deleted != 0;
  return row;
}

std::u16string PathOfRow(const RowText& row) {
  if (row.folder.empty()) return row.name;
  return row.folder.ends_with(u'\\') ? row.folder + row.name : row.folder + u"\\" + row.name;
}

}  // namespace quilmark
