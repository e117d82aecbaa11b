#include "content/run/first_line.h"

#include <algorithm>

#include "platform/utf.h"

namespace quilmark {

namespace {

// Chosen: of a longer line so much is shown before the hit, and in all.
constexpr size_t kMostBefore = 200, kMostShown = 500;

// Where a form of a term stands, and how wide its characters are.
struct Place {
  size_t at = std::string_view::npos;
  size_t unit = 1;  // bytes a unit: 1 or 2
};

void TakeEarlier(std::string_view bytes, std::string_view form, size_t unit, Place& place) {
  if (form.empty()) return;
  // What stands behind the place is of no interest.
  const size_t end =
      place.at == bytes.npos ? bytes.size() : std::min(bytes.size(), place.at + form.size());
  const size_t at = bytes.substr(0, end).find(form);
  if (at < place.at) place = {at, unit};
}

// The first of any term; `npos` where a term is not there at all.
Place FirstOfGroup(std::string_view bytes, const ContentGroup& group) {
  Place first;
  for (size_t term = 0; term < WidthOf(group); ++term) {
    Place place;
    if (term < group.Utf8Terms.size()) TakeEarlier(bytes, group.Utf8Terms[term], 1, place);
    if (term < group.AnsiTerms.size()) TakeEarlier(bytes, group.AnsiTerms[term], 1, place);
    if (term < group.WideTerms.size()) {
      TakeEarlier(bytes, WideBytesOf(group.WideTerms[term]), 2, place);
    }
    if (place.at == bytes.npos) return {};
    if (place.at < first.at) first = place;
  }
  return first;
}

// Whether a line of units of that width ends with the unit at `at`.
bool IsLineEnd(std::string_view bytes, size_t at, size_t unit) {
  return bytes[at] == '\n' && (unit == 1 || (at + 1 < bytes.size() && bytes[at + 1] == '\0'));
}

std::string TextOf(std::string_view line, size_t unit) {
  if (unit == 1) return ToUtf8(FromUtf8(line));
  std::u16string text;
  for (size_t i = 0; i + 1 < line.size(); i += 2) {
    text +=
        static_cast<char16_t>(static_cast<uint8_t>(line[i]) | static_cast<uint8_t>(line[i + 1]) << 8);
  }
  return ToUtf8(text);
}

FileLine LineAt(std::string_view bytes, Place place) {
  const size_t unit = place.unit;
  size_t start = place.at % unit;  // units may stand at odd places
  uint64_t number = 1;
  for (size_t at = start; at < place.at; at += unit) {
    if (!IsLineEnd(bytes, at, unit)) continue;
    ++number;
    start = at + unit;
  }
  if (place.at - start > kMostBefore) start = place.at - kMostBefore / unit * unit;
  size_t end = start;
  while (end + unit <= bytes.size() && end - start < kMostShown && !IsLineEnd(bytes, end, unit)) {
    end += unit;
  }
  std::string text = TextOf(bytes.substr(start, end - start), unit);
  if (text.ends_with('\r')) text.pop_back();
  return {number, std::move(text)};
}

}  // namespace

std::optional<FileLine> FirstLineIn(std::string_view bytes, const std::vector<ContentGroup>& groups) {
  Place first;
  for (const ContentGroup& group : groups) {
    const Place place = FirstOfGroup(bytes, group);
    if (place.at < first.at) first = place;
  }
  if (first.at == bytes.npos) return std::nullopt;
  return LineAt(bytes, first);
}

std::optional<FileLine> FirstLineOf(std::u16string_view path, const std::vector<ContentGroup>& groups,
                                    PlainFileReader& reader) {
  if (reader.content->Open(path) != ContentOpening::kOpened) return std::nullopt;
  std::string bytes;
  for (size_t step = kCachedRead; bytes.size() < kMostLineBytes; step = kStreamingRead) {
    const size_t had = bytes.size();
    bytes.resize(had + step);
    const auto count = reader.content->Read({bytes.data() + had, step});
    bytes.resize(had + count.value_or(0));
    if (!count || *count == 0) break;
  }
  reader.content->Close();
  return FirstLineIn(bytes, groups);
}

}  // namespace quilmark
