#include "shell/search/picked_query.h"

#include "config/extension_list.h"
#include "search/query/query.h"

namespace quilmark {

namespace {

std::u16string Trimmed(std::u16string_view text) {
  std::u16string trimmed(text);
  TrimQuery(trimmed);
  return trimmed;
}

// What stands between "s:" and the first "|". REQUIRES a trimmed text that begins so.
std::u16string WordsOf(const std::u16string& text) {
  constexpr size_t kPrefix = 2;
  return Trimmed(std::u16string_view(text).substr(kPrefix, text.find(u'|', kPrefix) - kPrefix));
}

}  // namespace

bool AsksForPicker(std::u16string_view former, std::u16string_view text) {
  const std::u16string before = Trimmed(former), now = Trimmed(text);
  if (!IsContentPrefix(now) || now == before) return false;
  return now.size() == 2 || (now.ends_with(u'|') && !before.ends_with(u'|'));
}

bool LacksWords(std::u16string_view text) {
  const std::u16string trimmed = Trimmed(text);
  return IsContentPrefix(trimmed) && ParseQueryGroups(WordsOf(trimmed)).empty();
}

PickedQuery WithExtensions(std::u16string_view box, const std::vector<std::u16string>& extensions,
                           size_t longest) {
  constexpr size_t kRoomForWords = 80;
  const std::u16string text = Trimmed(box);
  PickedQuery query{.text = u"s:"};
  if (IsContentPrefix(text)) query.text += WordsOf(text);
  query.caret = query.text.size();
  const std::u16string list = u"|" + JoinExtensionList(extensions);
  if (query.text.size() + kRoomForWords + list.size() <= longest) query.text += list;
  return query;
}

}  // namespace quilmark
