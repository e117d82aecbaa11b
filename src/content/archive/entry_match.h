// Matching of one entry, unpacked: its text is taken in three ways, from strict to loose.
#pragma once

#include <cstddef>
#include <string_view>

#include "content/archive/scratch.h"
#include "content/archive/text_match.h"
#include "content/match/work_check.h"

namespace quilmark {

// The units of an entry: UTF-16 of either order after its mark, else UTF-8, else the system's ANSI code
// page. Writes them to `out`, which has room for one a byte. Their number; 0 where there is no text.
[[nodiscard]] size_t EntryToUnits(std::string_view bytes, char16_t* out);

// Whether the entry holds a group's terms in any of its texts. False too where memory does not suffice,
// and once the check says that the work does not go on. `bytes` may stand in scratch.entry.
[[nodiscard]] bool MatchEntry(std::string_view bytes, const ArchiveTerms& terms, const WorkCheck& check,
                              ArchiveScratch& scratch);

// The same by all three texts, also where it could be told sooner that they hold nothing.
[[nodiscard]] bool MatchAllTexts(std::string_view bytes, const ArchiveTerms& terms,
                                 const WorkCheck& check, ArchiveScratch& scratch);

}  // namespace quilmark
