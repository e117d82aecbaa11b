#include "content/archive/entry_match.h"

#include <cstdint>

#include "content/archive/ascii_text.h"
#include "content/archive/utf8_units.h"
#include "content/archive/xml_text.h"
#include "content/match/group_search.h"
#include "platform/code_pages.h"

namespace quilmark {

namespace {

// Of pairs of bytes; an odd last byte is dropped.
size_t PairsToUnits(std::string_view bytes, size_t low, char16_t* out) {
  const size_t count = bytes.size() / 2;
  for (size_t i = 0; i < count; ++i) {
    const unsigned lowByte = static_cast<unsigned char>(bytes[2 * i + low]);
    const unsigned highByte = static_cast<unsigned char>(bytes[2 * i + 1 - low]);
    out[i] = static_cast<char16_t>(highByte << 8 | lowByte);
  }
  return count;
}

// The text of the runs in UTF-16. It is unpacked and extracted in one place, since it only gets shorter.
bool MatchWideRuns(std::string_view bytes, const ArchiveTerms& terms, const WorkCheck& check,
                   ArchiveScratch& scratch) {
  char16_t* const room = scratch.wide.Room(bytes.size());
  if (room == nullptr) return false;
  const std::u16string_view units(room, EntryToUnits(bytes, room));
  return check.GoesOn() &&
         MatchWideGroups(ExtractRunTextWide(units, room, check), terms, check, scratch);
}

bool MatchBytesOf(std::string_view text, const ArchiveTerms& terms, const WorkCheck& check,
                  ArchiveScratch& scratch) {
  return check.GoesOn() && !text.empty() &&
         (MatchCompactBytes(text, terms, check, scratch) ||
          MatchUtf8AsWide(text, terms, check, scratch));
}

// False where a look at the ASCII alone says that no text of the entry holds a group's terms.
bool MayHold(std::string_view bytes, const ArchiveTerms& terms, const WorkCheck& check,
             ArchiveScratch& scratch) {
  if (terms.asciiGroups.empty() || !IsUtf8(bytes)) return true;
  char* const runRoom = scratch.text.Room(bytes.size());
  char* const allRoom = scratch.compact.Room(bytes.size());
  if (runRoom == nullptr || allRoom == nullptr) return true;
  const auto texts = TakeAsciiTexts(bytes, runRoom, allRoom);
  if (!texts) return true;
  const auto holds = [&](std::string_view text) {
    return SearchGroupsInBytes(text.data(), text.data() + text.size(), terms.asciiGroups, check);
  };
  return holds(texts->inRuns) || (texts->all.data() != texts->inRuns.data() && holds(texts->all));
}

}  // namespace

size_t EntryToUnits(std::string_view bytes, char16_t* out) {
  if (bytes.starts_with("\xFF\xFE")) return PairsToUnits(bytes.substr(2), 0, out);
  if (bytes.starts_with("\xFE\xFF")) return PairsToUnits(bytes.substr(2), 1, out);
  if (bytes.starts_with("\xEF\xBB\xBF")) bytes.remove_prefix(3);
  if (const auto count = Utf8ToUnits(bytes, out, MalformedUtf8::kRefused)) return *count;
  return AnsiToUnits(bytes, out);
}

bool MatchEntry(std::string_view bytes, const ArchiveTerms& terms, const WorkCheck& check,
                ArchiveScratch& scratch) {
  return check.GoesOn() && MayHold(bytes, terms, check, scratch) &&
         MatchAllTexts(bytes, terms, check, scratch);
}

bool MatchAllTexts(std::string_view bytes, const ArchiveTerms& terms, const WorkCheck& check,
                   ArchiveScratch& scratch) {
  if (MatchWideRuns(bytes, terms, check, scratch)) return true;
  char* const room = scratch.text.Room(bytes.size());
  if (room == nullptr || !check.GoesOn()) return false;
  if (MatchBytesOf(ExtractRunTextBytes(bytes, room, check), terms, check, scratch)) return true;
  if (!check.GoesOn()) return false;
  return MatchBytesOf(StripAllTagsBytes(bytes, room, check), terms, check, scratch);
}

}  // namespace quilmark
