#include "cli/query_text.h"

#include <algorithm>

#include "platform/utf.h"
#include "search/query/query.h"

namespace quilmark {

// The backslashes are those of the query language.
std::u16string QueryTextOf(const std::string& typed) {
  std::u16string text = FromHostBytes(typed);
  std::replace(text.begin(), text.end(), kNameBackslash, u'\\');
  TrimQuery(text);
  return text;
}

bool IsContentQuery(const std::string& typed) {
  return ParseContentQuery(QueryTextOf(typed), {}).Active;
}

}  // namespace quilmark
