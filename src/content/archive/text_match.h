// Matching on the text of an archive's entry: as it is, and without its white space, since the markup of
// an office program may split a word anywhere.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "content/archive/scratch.h"
#include "content/match/content_group.h"
#include "content/match/work_check.h"

namespace quilmark {

// Terms as typed: of the outer list one must be satisfied, by all terms of the inner.
using WideGroups = std::vector<std::vector<std::u16string>>;

// What is looked for in archives. Made once a search, and never changed afterwards.
struct ArchiveTerms {
  std::vector<ContentGroup> groups;
  std::vector<ContentGroup> compactGroups;  // the UTF-8 forms alone, without white space
  WideGroups wideGroups;
  WideGroups compactWideGroups;
  // Terms of ASCII without white space, for TakeAsciiTexts. Empty where a term is of another kind.
  std::vector<ContentGroup> asciiGroups;
};

// From the groups of a query in both of their forms.
ArchiveTerms MakeArchiveTerms(const std::vector<ContentGroup>& groups, const WideGroups& wideGroups);

// Copies `text` to `out` without blanks, tabs, line ends, U+00A0, U+3000 and U+200B, in UTF-8. The
// number of bytes. `out` has room for all of it and may be its own place.
size_t CompactBytes(std::string_view text, char* out);

// The same in UTF-16, without all that IsWideSpace names, U+200B to U+200F, U+202A to U+202E, U+2060 and
// U+FEFF.
size_t CompactUnits(std::u16string_view text, char16_t* out);

// Whether the text satisfies a group as it is, or without white space that of the terms without theirs.
// False for no text, for one for which memory does not suffice, and once the check says that the work
// does not go on; so are the two below.
[[nodiscard]] bool MatchCompactBytes(std::string_view text, const ArchiveTerms& terms,
                                     const WorkCheck& check, ArchiveScratch& scratch);

// Whether each term of a group occurs in the text as it is, or both without white space. An empty term
// does; a group without terms is not satisfied. `text` may stand in scratch.wide.
[[nodiscard]] bool MatchWideGroups(std::u16string_view text, const ArchiveTerms& terms,
                                   const WorkCheck& check, ArchiveScratch& scratch);

// The same for UTF-8; malformed bytes become U+FFFD. Uses scratch.wide.
[[nodiscard]] bool MatchUtf8AsWide(std::string_view text, const ArchiveTerms& terms,
                                   const WorkCheck& check, ArchiveScratch& scratch);

}  // namespace quilmark
