// Any text: terms come out trimmed and not empty, a query written out from its terms means the same,
// paths stand still once they are normalised.
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#include "platform/files.h"
#include "platform/text.h"
#include "search/query/query.h"

namespace quilmark {
namespace {

void Require(bool holds) {
  if (!holds) std::abort();
}

bool IsTrimmed(std::u16string text) {
  const std::u16string before = text;
  TrimQuery(text);
  return text == before;
}

void CheckGroups(const QueryGroups& groups) {
  for (const auto& group : groups) {
    Require(!group.empty());
    for (const std::u16string& term : group) Require(!term.empty() && IsTrimmed(term));
  }
}

// A text that gives `groups`: each character of a term behind a backslash.
std::u16string Written(const QueryGroups& groups) {
  std::u16string text;
  for (const auto& group : groups) {
    if (!text.empty()) text += u"\tOR ";
    for (size_t i = 0; i < group.size(); ++i) {
      if (i > 0) text += u" and ";
      for (const char16_t unit : group[i]) text += {u'\\', unit};
    }
  }
  return text;
}

void CheckNameQuery(std::u16string_view text) {
  const QueryGroups groups = ParseQueryGroups(text);
  CheckGroups(groups);
  Require(ParseQueryGroups(Written(groups)) == groups);

  const QueryGroups prepared = PrepareNameGroups(groups);
  CheckGroups(prepared);
  Require(prepared.size() == groups.size());
  Require(PrepareNameGroups(prepared) == prepared);
  for (const auto& group : prepared) {
    std::u16string name;
    for (const std::u16string& term : group) name += term + u'/';
    const bool hasNul = name.find(u'\0') != name.npos;
    Require(hasNul || MatchName(name, prepared));
    Require(!MatchName(std::u16string_view(), {group}));
  }
}

void CheckContentQuery(std::u16string_view text) {
  const ContentQuery query = ParseContentQuery(text, {u".txt"});
  CheckGroups(query.Groups);
  Require(query.Active == !query.Groups.empty());
  Require(!query.Active || IsContentPrefix(text));
  for (const std::u16string& ext : query.Exts) {
    Require(ext.starts_with(u'.') && IsTrimmed(ext) && FoldText(ext) == ext);
    Require(ext.find(u',') == ext.npos);
  }
}

bool IsQuoted(std::u16string_view text) {
  return text.size() >= 2 && text.front() == text.back() &&
         (text.front() == u'"' || text.front() == u'\'');
}

void CheckPath(std::u16string_view text) {
  const std::u16string path = NormalizePathQuery(text);
  Require(path.size() <= text.size() && path.find(u'/') == path.npos);
  Require(path.size() <= 3 || path.back() != u'\\');
  // Quotes within quotes come off one pair a call, and blanks within quotes stay for one.
  if (IsTrimmed(path) && !IsQuoted(path)) Require(NormalizePathQuery(path) == path);

  const auto folder = IsExistingFolderQuery(text);
  Require(!folder || (IsExistingFolder(*folder) && path == *folder));

  Require(PathInDesktop(text, text) == !text.empty());
  if (path.empty()) return;
  Require(PathInDesktop(path + u"\\x", path) && PathInDesktop(FoldText(path), path));
}

}  // namespace
}  // namespace quilmark

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace quilmark;
  std::u16string text(size / sizeof(char16_t), u'\0');
  std::memcpy(text.data(), data, text.size() * sizeof(char16_t));
  TrimQuery(text);
  Require(IsTrimmed(text));
  CheckNameQuery(text);
  CheckContentQuery(text);
  CheckPath(text);
  return 0;
}
