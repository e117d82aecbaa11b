// Any typed bytes as a query: the text is trimmed, keeps its backslashes, and gives well-formed bytes
// again.
#include "cli/query_text.h"
#include "platform/utf.h"
#include "search/query/query.h"
#include "support/fuzz_input.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace quilmark;
  const std::string typed(InputOf(data, size).RestAsText());
  const std::u16string text = QueryTextOf(typed);
  std::u16string trimmed = text;
  TrimQuery(trimmed);
  Require(trimmed == text && text.find(kNameBackslash) == text.npos);
  Require(std::count(text.begin(), text.end(), u'\\') == std::count(typed.begin(), typed.end(), '\\'));
  Require(typed.find(ToHostBytes(text)) != typed.npos || text.find(u'\\') != text.npos);
  Require(!IsContentQuery(typed) || (text.starts_with(u"s:") && text.size() > 2));
  return 0;
}
