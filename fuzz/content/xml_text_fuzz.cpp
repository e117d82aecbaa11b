// Any bytes as XML: the extractors give what their references do, in room of their own and in place, and
// an entry's text is found by what it says, by the shortcut as by all of its texts.
#include "content/archive/xml_text.h"

#include "content/archive/entry_match.h"
#include "content/archive/xml_reference.h"
#include "platform/generation.h"
#include "platform/utf.h"
#include "support/fuzz_input.h"

using namespace quilmark;

namespace {

const WorkCheck kGoesOn(Ticket::Unlimited());

using ByteExtractor = std::string_view (*)(std::string_view, char*, const WorkCheck&);

void CheckBytes(ByteExtractor extract, std::string_view xml, const std::string& expected) {
  const auto room = std::make_unique<char[]>(xml.size());
  Require(extract(xml, room.get(), kGoesOn) == expected);
  std::string own(xml);
  Require(extract(own, own.data(), kGoesOn) == expected);
}

void CheckUnits(std::string_view bytes) {
  std::u16string xml(bytes.size(), u'\0');
  xml.resize(EntryToUnits(bytes, xml.data()));
  const auto room = std::make_unique<char16_t[]>(xml.size());
  const std::u16string expected = ReferenceRunTextWide(xml);
  Require(ExtractRunTextWide(xml, room.get(), kGoesOn) == expected);
  Require(ExtractRunTextWide(xml, xml.data(), kGoesOn) == expected);
}

// The first units of the text of the runs are found.
void CheckMatch(std::string_view bytes) {
  std::u16string xml(bytes.size(), u'\0');
  xml.resize(EntryToUnits(bytes, xml.data()));
  const std::u16string term = ReferenceRunTextWide(xml).substr(0, 5);
  if (term.empty()) return;
  const WideGroups groups{{term}};
  ArchiveScratch scratch;
  Require(MatchEntry(bytes, MakeArchiveTerms(MakeContentGroups(groups), groups), kGoesOn, scratch));
}

// What is told of an entry by its ASCII alone is what all of its texts tell. The first line has a term.
void CheckShortcut(FuzzInput input) {
  std::u16string term = FromUtf8(input.TakeLine());
  if (term.empty()) return;
  const WideGroups groups{{term}, {u"a", term.substr(term.size() / 2) + u"b"}};
  const ArchiveTerms terms = MakeArchiveTerms(MakeContentGroups(groups), groups);
  ArchiveScratch scratch;
  const std::string_view bytes = input.RestAsText();
  Require(MatchEntry(bytes, terms, kGoesOn, scratch) == MatchAllTexts(bytes, terms, kGoesOn, scratch));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string_view bytes = InputOf(data, size).RestAsText();
  CheckBytes(ExtractRunTextBytes, bytes, ReferenceRunTextBytes(bytes));
  CheckBytes(StripAllTagsBytes, bytes, ReferenceStripAllTags(bytes));
  CheckUnits(bytes);
  CheckMatch(bytes);
  CheckShortcut(InputOf(data, size));
  return 0;
}
