#include "shell/rename_text.h"

#include "search/query.h"

namespace quilmark {

RenameStep CheckRename(std::u16string_view oldName, std::u16string& text) {
  TrimQuery(text);
  if (text.empty() || text == oldName) return RenameStep::kClose;
  const bool isBad = text.find_first_of(u"\\/:*?\"<>|") != std::u16string::npos;
  return isBad ? RenameStep::kInvalid : RenameStep::kRename;
}

size_t SelectedStem(std::u16string_view name, bool isDirectory) {
  const size_t dot = isDirectory ? std::u16string_view::npos : name.rfind(u'.');
  return dot == std::u16string_view::npos ? name.size() : dot;
}

}  // namespace quilmark
