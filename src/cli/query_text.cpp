#include "cli/query_text.h"

#include <algorithm>

#include "platform/drives.h"
#include "platform/utf.h"
#include "search/query.h"

namespace quilmark {

namespace {

// The backslashes are those of the query language.
std::u16string FromTyped(const std::string& typed) {
  std::u16string text = FromHostBytes(typed);
  std::replace(text.begin(), text.end(), kNameBackslash, u'\\');
  TrimQuery(text);
  return text;
}

bool IsAbsolute(const std::u16string& path) {
  return path.starts_with(u'\\') || (path.size() >= 2 && path[1] == u':');
}

// The same terms in a form that is the path of nothing.
std::u16string AsNames(const std::u16string& text) { return u"\"\"" + text + u"\"\""; }

}  // namespace

bool IsContentQuery(const std::string& typed) { return ParseContentQuery(FromTyped(typed), {}).Active; }

std::u16string QueryTextOf(const std::string& typed) {
  std::u16string text = FromTyped(typed);
  std::u16string folder;
  if (IsExistingFolderQuery(text, folder)) return IsAbsolute(folder) ? text : AsNames(text);
  // On Windows the host's "C:" and a mapped one may differ.
  const auto mapped = MappedPathOf(NormalizePathQuery(text));
  return mapped && IsExistingFolderQuery(*mapped, folder) ? *mapped : text;
}

}  // namespace quilmark
