#include "content/match/content_group.h"

#include <algorithm>
#include <utility>

#include "platform/code_pages.h"
#include "platform/utf.h"

namespace quilmark {

namespace {

ContentGroup MakeContentGroup(const std::vector<std::u16string>& terms) {
  ContentGroup group;
  group.WideTerms = terms;
  for (const std::u16string& term : terms) {
    group.Utf8Terms.push_back(ToUtf8(term));
    group.AnsiTerms.push_back(EncodeAnsiLossy(term));
  }
  PrepareNeedles(group);
  return group;
}

}  // namespace

std::vector<ContentGroup> MakeContentGroups(const QueryGroups& groups) {
  std::vector<ContentGroup> made;
  made.reserve(groups.size());
  for (const auto& terms : groups) made.push_back(MakeContentGroup(terms));
  return made;
}

size_t WidthOf(const ContentGroup& group) {
  return std::max({group.Utf8Terms.size(), group.AnsiTerms.size(), group.WideTerms.size()});
}

std::string WideBytesOf(std::u16string_view text) {
  std::string bytes;
  bytes.reserve(2 * text.size());
  for (const char16_t unit : text) {
    bytes.push_back(static_cast<char>(unit & 0xFF));
    bytes.push_back(static_cast<char>(unit >> 8));
  }
  return bytes;
}

void PrepareNeedles(ContentGroup& group) {
  group.needles.clear();
  for (size_t term = 0; term < WidthOf(group); ++term) group.needles.push_back(NeedlesOf(group, term));
}

std::vector<ByteNeedle> NeedlesOf(const ContentGroup& group, size_t term) {
  std::vector<std::string> forms;
  if (term < group.Utf8Terms.size()) forms.push_back(group.Utf8Terms[term]);
  if (term < group.AnsiTerms.size()) forms.push_back(group.AnsiTerms[term]);
  if (term < group.WideTerms.size()) forms.push_back(WideBytesOf(group.WideTerms[term]));
  return MakeByteNeedles(std::move(forms));
}

size_t LongestForm(const std::vector<ContentGroup>& groups) {
  size_t longest = 0;
  for (const ContentGroup& group : groups) {
    for (const std::string& term : group.Utf8Terms) longest = std::max(longest, term.size());
    for (const std::string& term : group.AnsiTerms) longest = std::max(longest, term.size());
    for (const std::u16string& term : group.WideTerms) longest = std::max(longest, 2 * term.size());
  }
  return longest;
}

}  // namespace quilmark
