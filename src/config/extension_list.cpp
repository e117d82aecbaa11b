#include "config/extension_list.h"

#include <algorithm>

#include "platform/text.h"
#include "platform/text_file.h"

namespace quilmark {

std::vector<std::u16string> ParseExtensionList(std::u16string_view text) {
  std::vector<std::u16string> extensions;
  while (!text.empty()) {
    const size_t comma = std::min(text.find(u','), text.size());
    std::u16string_view piece = text.substr(0, comma);
    piece.remove_prefix(std::min(piece.find_first_not_of(u" \t\r\n"), piece.size()));
    std::u16string extension = FoldText(TrimText(piece));
    text.remove_prefix(std::min(comma + 1, text.size()));
    if (extension.empty()) continue;
    if (!extension.starts_with(u'.')) extension.insert(0, u".");
    extensions.push_back(std::move(extension));
  }
  return extensions;
}

std::u16string JoinExtensionList(const std::vector<std::u16string>& extensions) {
  std::u16string joined;
  for (const std::u16string& extension : extensions) {
    if (!joined.empty()) joined += u',';
    joined += extension;
  }
  return joined;
}

}  // namespace quilmark
