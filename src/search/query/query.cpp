#include "search/query/query.h"

#include <algorithm>
#include <utility>

#include "config/extension_list.h"
#include "platform/text.h"
#include "platform/utf.h"

namespace quilmark {

static constexpr std::u16string_view kQueryBlanks = u" \t\r\n";

static std::u16string_view Trimmed(std::u16string_view text) {
  const size_t first = text.find_first_not_of(kQueryBlanks);
  if (first == text.npos) return {};
  return text.substr(first, text.find_last_not_of(kQueryBlanks) - first + 1);
}

void TrimQuery(std::u16string& text) { text = std::u16string(Trimmed(text)); }

namespace {

struct GroupBuilder {
  QueryGroups groups;
  std::vector<std::u16string> group;
  std::u16string term;
};

}  // namespace

static void EndTerm(GroupBuilder& builder) {
  const std::u16string_view term = Trimmed(builder.term);
  if (!term.empty()) builder.group.emplace_back(term);
  builder.term.clear();
}

static void EndGroup(GroupBuilder& builder) {
  EndTerm(builder);
  if (!builder.group.empty()) builder.groups.push_back(std::move(builder.group));
  builder.group.clear();
}

static bool IsBlankOrTab(char16_t unit) { return unit == u' ' || unit == u'\t'; }

// `text` begins with a blank, `word` and a blank.
static bool StartsWithKeyword(std::u16string_view text, std::u16string_view word) {
  return text.size() >= word.size() + 2 && IsBlankOrTab(text[0]) &&
         IsBlankOrTab(text[word.size() + 1]) && EqualNoCase(text.substr(1, word.size()), word);
}

QueryGroups ParseQueryGroups(std::u16string_view text) {
  GroupBuilder builder;
  bool inQuotes = false;
  while (!text.empty()) {
    size_t used = 1;
    if (text[0] == u'\\') {
      builder.term += text.substr(1, 1);
      used = std::min<size_t>(2, text.size());
    } else if (text[0] == u'"') {
      inQuotes = !inQuotes;
    } else if (!inQuotes && StartsWithKeyword(text, u"and")) {
      EndTerm(builder);
      used = 5;
    } else if (!inQuotes && StartsWithKeyword(text, u"or")) {
      EndGroup(builder);
      used = 4;
    } else {
      builder.term += text[0];
    }
    text.remove_prefix(used);
  }
  EndGroup(builder);
  return std::move(builder.groups);
}

static std::u16string PreparedTerm(std::u16string_view term) {
  std::u16string prepared = FoldText(Trimmed(term));
  std::replace(prepared.begin(), prepared.end(), u'\\', kNameBackslash);
  return prepared;
}

QueryGroups PrepareNameGroups(QueryGroups groups) {
  for (std::vector<std::u16string>& group : groups) {
    for (std::u16string& term : group) term = PreparedTerm(term);
    std::erase(group, u"");
  }
  std::erase_if(groups, [](const auto& group) { return group.empty(); });
  return groups;
}

ContentQuery ParseContentQuery(std::u16string_view text,
                               const std::vector<std::u16string>& defaultExts) {
  if (!text.starts_with(u"s:")) return {};
  const std::u16string_view rest = Trimmed(text.substr(2));
  if (rest.empty()) return {};

  const size_t bar = rest.find(u'|');
  ContentQuery query;
  query.Groups = ParseQueryGroups(rest.substr(0, bar));
  query.Exts = bar == rest.npos ? defaultExts : ParseExtensionList(rest.substr(bar + 1));
  query.Active = !query.Groups.empty();
  return query;
}

bool IsContentPrefix(std::u16string_view text) {
  const std::u16string_view trimmed = Trimmed(text);
  return trimmed.size() >= 2 && FoldUnit(trimmed[0]) == u's' && trimmed[1] == u':';
}

bool HoldsAllTerms(std::u16string_view name, const std::vector<std::u16string>& terms) {
  return std::all_of(terms.begin(), terms.end(),
                     [name](const std::u16string& term) { return name.find(term) != name.npos; });
}

bool MatchName(std::u16string_view lowerName, const QueryGroups& groups) {
  const std::u16string_view name = lowerName.substr(0, lowerName.find(u'\0'));
  return groups.empty() || std::any_of(groups.begin(), groups.end(),
                                       [name](const auto& group) { return HoldsAllTerms(name, group); });
}

}  // namespace quilmark
