#include "content/archive/text_match.h"

#include <algorithm>
#include <cstring>

#include "content/archive/utf8_units.h"
#include "content/archive/xml_text.h"
#include "content/match/group_search.h"

namespace quilmark {

namespace {

// Bytes of the white space at `at` that a compact text is without; 0 for anything else.
size_t SpaceLength(const char* at, const char* last) {
  const auto startsWith = [&](std::string_view form) {
    return static_cast<size_t>(last - at) >= form.size() &&
           std::memcmp(at, form.data(), form.size()) == 0;
  };
  switch (static_cast<unsigned char>(*at)) {
    case ' ':
    case '\t':
    case '\n':
    case '\r':
      return 1;
    case 0xC2:
      return startsWith("\xC2\xA0") ? 2 : 0;
    case 0xE2:
      return startsWith("\xE2\x80\x8B") ? 3 : 0;
    case 0xE3:
      return startsWith("\xE3\x80\x80") ? 3 : 0;
    default:
      return 0;
  }
}

bool IsDropped(char16_t unit) {
  if (unit < 0x80) return unit == ' ' || (unit >= '\t' && unit <= '\r');
  const bool isFormat = (unit >= 0x200B && unit <= 0x200F) || (unit >= 0x202A && unit <= 0x202E);
  return isFormat || unit == 0x2060 || unit == 0xFEFF || IsWideSpace(unit);
}

std::u16string Compacted(const std::u16string& term) {
  std::u16string compact(term.size(), u'\0');
  compact.resize(CompactUnits(term, compact.data()));
  return compact;
}

std::string Compacted(const std::string& term) {
  std::string compact(term.size(), '\0');
  compact.resize(CompactBytes(term, compact.data()));
  return compact;
}

// Whether a unit of the block is the one looked for; written so that compilers take many at once.
bool HasUnit(const char16_t* block, size_t size, char16_t unit) {
  bool has = false;
  for (size_t i = 0; i < size; ++i) has |= block[i] == unit;
  return has;
}

// Whether the term, which is not empty, stands in the text.
bool HoldsUnits(std::u16string_view text, std::u16string_view term) {
  constexpr size_t kBlock = 64;
  if (term.size() > text.size()) return false;
  const size_t places = text.size() - term.size() + 1;
  for (size_t from = 0; from < places; from += kBlock) {
    const size_t size = std::min(kBlock, places - from);
    if (!HasUnit(text.data() + from, size, term[0])) continue;
    for (size_t i = from; i < from + size; ++i) {
      if (text[i] == term[0] && text.substr(i, term.size()) == term) return true;
    }
  }
  return false;
}

// A text, and the same without white space, made when it is first needed.
class WideText {
 public:
  WideText(std::u16string_view text, const WorkCheck& check, ArchiveScratch& scratch)
      : text_(text), check_(check), scratch_(scratch) {}

  bool Holds(std::u16string_view term, std::u16string_view compactTerm) {
    if (term.empty() || HoldsInSteps(text_, term)) return true;
    return !compactTerm.empty() && HoldsInSteps(Compact(), compactTerm);
  }

 private:
  std::u16string_view Compact() {
    if (!isCompacted_) {
      char16_t* const room = scratch_.compactWide.Room(text_.size());
      compact_ = {room, room == nullptr ? 0 : CompactUnits(text_, room)};
      isCompacted_ = true;
    }
    return compact_;
  }

  // Steps reach over their end by what a term needs to stand across it.
  bool HoldsInSteps(std::u16string_view text, std::u16string_view term) {
    constexpr size_t kUnitsACheck = 256 * 1024;
    for (size_t at = 0; at < text.size(); at += kUnitsACheck) {
      if (!check_.GoesOn()) return false;
      if (HoldsUnits(text.substr(at, kUnitsACheck + term.size() - 1), term)) return true;
    }
    return false;
  }

  std::u16string_view text_;
  const WorkCheck& check_;
  ArchiveScratch& scratch_;
  std::u16string_view compact_;
  bool isCompacted_ = false;
};

// A term in the one form that it has in ASCII, without white space; empty for one that has others.
std::string AsciiTerm(const ContentGroup& group, size_t term) {
  const bool isWhole =
      term < group.Utf8Terms.size() && term < group.AnsiTerms.size() && term < group.WideTerms.size();
  if (!isWhole || group.Utf8Terms[term] != group.AnsiTerms[term]) return {};
  std::string compact;
  for (const char16_t unit : group.WideTerms[term]) {
    if (unit == 0 || unit >= 0x80) return {};
    if (!IsWideSpace(unit)) compact.push_back(static_cast<char>(unit));
  }
  return compact;
}

// None where one term has other forms.
std::vector<ContentGroup> AsciiGroups(const std::vector<ContentGroup>& groups,
                                      const WideGroups& wideGroups) {
  std::vector<ContentGroup> made;
  for (size_t i = 0; i < groups.size(); ++i) {
    if (i >= wideGroups.size() || groups[i].WideTerms != wideGroups[i]) return {};
    ContentGroup& ascii = made.emplace_back();
    for (size_t term = 0; term < WidthOf(groups[i]); ++term) {
      ascii.Utf8Terms.push_back(AsciiTerm(groups[i], term));
      if (ascii.Utf8Terms.back().empty()) return {};
    }
    PrepareNeedles(ascii);
  }
  return made.size() == wideGroups.size() ? made : std::vector<ContentGroup>();
}

}  // namespace

ArchiveTerms MakeArchiveTerms(const std::vector<ContentGroup>& groups, const WideGroups& wideGroups) {
  ArchiveTerms terms{.groups = groups, .wideGroups = wideGroups};
  terms.asciiGroups = AsciiGroups(groups, wideGroups);
  for (const ContentGroup& group : groups) {
    ContentGroup compact;
    for (const std::string& term : group.Utf8Terms) compact.Utf8Terms.push_back(Compacted(term));
    PrepareNeedles(compact);
    terms.compactGroups.push_back(std::move(compact));
  }
  for (const auto& group : wideGroups) {
    auto& compact = terms.compactWideGroups.emplace_back();
    for (const std::u16string& term : group) compact.push_back(Compacted(term));
  }
  return terms;
}

size_t CompactBytes(std::string_view text, char* out) {
  const char* at = text.data();
  const char* const last = at + text.size();
  char* to = out;
  while (at != last) {
    const char* stop = at;
    size_t space = 0;
    while (stop != last && (space = SpaceLength(stop, last)) == 0) ++stop;
    std::memmove(to, at, static_cast<size_t>(stop - at));
    to += stop - at;
    at = stop + space;
  }
  return static_cast<size_t>(to - out);
}

size_t CompactUnits(std::u16string_view text, char16_t* out) {
  char16_t* to = out;
  for (const char16_t unit : text) {
    if (!IsDropped(unit)) *to++ = unit;
  }
  return static_cast<size_t>(to - out);
}

bool MatchCompactBytes(std::string_view text, const ArchiveTerms& terms, const WorkCheck& check,
                       ArchiveScratch& scratch) {
  if (text.empty()) return false;
  if (SearchGroupsInBytes(text.data(), text.data() + text.size(), terms.groups, check)) return true;
  char* const room = scratch.compact.Room(text.size());
  const size_t size = room == nullptr ? 0 : CompactBytes(text, room);
  if (size == 0) return false;
  return SearchGroupsInBytes(room, room + size, terms.compactGroups, check);
}

bool MatchWideGroups(std::u16string_view text, const ArchiveTerms& terms, const WorkCheck& check,
                     ArchiveScratch& scratch) {
  if (text.empty()) return false;
  WideText wide(text, check, scratch);
  for (size_t i = 0; i < terms.wideGroups.size(); ++i) {
    const auto& group = terms.wideGroups[i];
    if (!check.GoesOn()) return false;
    size_t found = 0;
    while (found < group.size() && wide.Holds(group[found], terms.compactWideGroups[i][found])) ++found;
    if (found == group.size() && found != 0) return true;
  }
  return false;
}

bool MatchUtf8AsWide(std::string_view text, const ArchiveTerms& terms, const WorkCheck& check,
                     ArchiveScratch& scratch) {
  char16_t* const room = scratch.wide.Room(text.size());
  if (text.empty() || room == nullptr) return false;
  const auto size = Utf8ToUnits(text, room, MalformedUtf8::kReplaced);
  return MatchWideGroups({room, size.value_or(0)}, terms, check, scratch);
}

}  // namespace quilmark
