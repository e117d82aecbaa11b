#include "cli/query_text.h"

#include <algorithm>

#include "platform/utf.h"
#include "search/query.h"

namespace quilmark {

std::u16string QueryTextOf(const std::string& typed) {
  std::u16string text = FromHostBytes(typed);
  std::replace(text.begin(), text.end(), kNameBackslash, u'\\');  // those of the query language
  TrimQuery(text);
  return text;
}

bool IsContentQuery(const std::string& typed) {
  return ParseContentQuery(QueryTextOf(typed), {}).Active;
}

}  // namespace quilmark
