#include "content/archive/xml_text.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>

#include "content/archive/tag_end.h"
#include "content/archive/xml_entity.h"

namespace quilmark {

namespace {

constexpr ptrdiff_t kUnitsACheck = 256 * 1024;

enum class TagKind : uint8_t { kOther, kRun, kBreak };

template <typename Unit>
Unit Lower(Unit unit) {
  return unit >= 'A' && unit <= 'Z' ? static_cast<Unit>(unit + 32) : unit;
}

// Of a name without its prefix.
template <typename Unit>
TagKind KindOf(std::basic_string_view<Unit> name) {
  if (name.empty() || name.size() > 3) return TagKind::kOther;
  const Unit first = Lower(name[0]);
  if (name.size() == 1) {
    if (first == 't' || first == 'v') return TagKind::kRun;
    return first == 'p' || first == 'c' ? TagKind::kBreak : TagKind::kOther;
  }
  const Unit second = Lower(name[1]);
  if (name.size() == 2) {
    const bool isBreak = (second == 'r' && (first == 'b' || first == 'c' || first == 't')) ||
                         (first == 't' && second == 'c');
    return isBreak ? TagKind::kBreak : TagKind::kOther;
  }
  const Unit third = Lower(name[2]);
  const bool isBreak =
      (first == 't' && second == 'a' && third == 'b') || (first == 'r' && second == 'o' && third == 'w');
  return isBreak ? TagKind::kBreak : TagKind::kOther;
}

// Bytes that a run of text does not simply hand on.
constexpr std::array<bool, 256> kSpecialBytes = [] {
  std::array<bool, 256> special{};
  for (const unsigned byte : {0x09u, 0x0Au, 0x0Du, 0x20u, 0xA0u, unsigned{'<'}, unsigned{'&'}})
    special[byte] = true;
  return special;
}();

struct ByteRules {
  using Unit = char;
  static bool IsSpace(char byte) { return byte != '<' && byte != '&' && IsSpecial(byte); }
  static bool IsSpecial(char byte) { return kSpecialBytes[static_cast<unsigned char>(byte)]; }
  static const char* Find(const char* first, const char* last, char byte) {
    const void* found = std::memchr(first, byte, static_cast<size_t>(last - first));
    return found == nullptr ? last : static_cast<const char*>(found);
  }
};

struct WideRules {
  using Unit = char16_t;
  static bool IsSpace(char16_t unit) { return IsWideSpace(unit); }
  static bool IsSpecial(char16_t unit) { return unit == '<' || unit == '&' || IsWideSpace(unit); }
  static const char16_t* Find(const char16_t* first, const char16_t* last, char16_t unit) {
    return std::find(first, last, unit);
  }
};

char* PutUtf8(uint64_t character, char* to) {
  const auto put = [&to](uint64_t byte) { *to++ = static_cast<char>(byte); };
  if (character > 0x10'FFFF) return to;
  if (character < 0x80) {
    put(character);
    return to;
  }
  if (character < 0x800) {
    put(0xC0 | (character >> 6));
  } else {
    if (character < 0x1'0000) {
      put(0xE0 | (character >> 12));
    } else {
      put(0xF0 | (character >> 18));
      put(0x80 | ((character >> 12) & 0x3F));
    }
    put(0x80 | ((character >> 6) & 0x3F));
  }
  put(0x80 | (character & 0x3F));
  return to;
}

// What the extractors have in common: a place in the part and one in the output, which is never ahead.
template <typename Rules>
struct Copier {
  using Unit = typename Rules::Unit;
  using View = std::basic_string_view<Unit>;

  const Unit* at;
  const Unit* last;
  Unit* begin;
  Unit* out;
  const WorkCheck& check;
  const Unit* nextCheck;
  bool isOver = false;

  Copier(View xml, Unit* place, const WorkCheck& goesOn)
      : at(xml.data()),
        last(xml.data() + xml.size()),
        begin(place),
        out(place),
        check(goesOn),
        nextCheck(at) {}

  // Once false it stays false, whichever loop has asked.
  bool GoesOn() {
    if (isOver || at < nextCheck) return !isOver;
    nextCheck = at + std::min(last - at, kUnitsACheck);
    isOver = !check.GoesOn();
    return !isOver;
  }

  bool EndsInBlank() const { return out != begin && out[-1] == ' '; }

  // Hands on what stands before `end` and is no markup. A blank behind another character is as good as
  // one.
  void CopyPlain(const Unit* end) {
    const Unit* stop = at;
    while (stop != end) {
      const bool isPlain = !Rules::IsSpecial(*stop) || (*stop == ' ' && stop != at && stop[-1] != ' ');
      if (!isPlain) break;
      ++stop;
    }
    std::memmove(out, at, static_cast<size_t>(stop - at) * sizeof(Unit));
    out += stop - at;
    at = stop;
  }

  View Stripped() const {
    const Unit* first = begin;
    const Unit* end = out;
    while (first != end && *first == ' ') ++first;
    while (first != end && end[-1] == ' ') --end;
    return {first, static_cast<size_t>(end - first)};
  }
};

// At "&". Without a ";" behind it all the rest belongs to it.
void ReadEntity(Copier<ByteRules>& copier) {
  constexpr size_t kMostGathered = 15;
  const char* const name = copier.at + 1;
  const char* const end = ByteRules::Find(name, copier.last, ';');
  copier.at = end == copier.last ? end : end + 1;
  if (end == copier.last) return;
  const auto value =
      ValueOfEntity(std::string_view(name, std::min(static_cast<size_t>(end - name), kMostGathered)));
  if (value) copier.out = PutUtf8(*value, copier.out);
}

void ReadEntity(Copier<WideRules>& copier) {
  constexpr ptrdiff_t kFarthestEnd = 16;
  const char16_t* const name = copier.at + 1;
  const char16_t* const limit = name + std::min(copier.last - name, kFarthestEnd);
  const char16_t* const end = std::find(name, limit, u';');
  const auto value = end == limit
                         ? std::nullopt
                         : ValueOfEntity(std::u16string_view(name, static_cast<size_t>(end - name)));
  const bool isOneUnit = value && *value != 0 && *value < 0x1'0000;
  *copier.out++ = isOneUnit ? static_cast<char16_t>(*value) : u'&';
  copier.at = isOneUnit ? end + 1 : name;
}

template <typename Rules>
struct RunExtractor : Copier<Rules> {
  using Unit = typename Rules::Unit;
  using View = std::basic_string_view<Unit>;
  using Copier<Rules>::Copier;
  using Copier<Rules>::at;
  using Copier<Rules>::last;
  using Copier<Rules>::out;
  bool inRun = false;

  View Extract() {
    while (at != last && this->GoesOn()) {
      if (inRun) {
        CopyRun();
      } else {
        at = Rules::Find(at, last, '<');
      }
      if (at == last || (*at == '<' && !ReadTag())) break;
    }
    return this->Stripped();
  }

 private:
  // Up to the next tag, or somewhat less far.
  void CopyRun() {
    while (at != last && *at != '<' && this->GoesOn()) {
      this->CopyPlain(last);
      if (at == last || *at == '<') return;
      if (*at == '&') {
        ReadEntity(*this);
      } else {
        AppendBlank();
        ++at;
      }
    }
  }

  void AppendBlank() {
    if (out != this->begin && !this->EndsInBlank()) *out++ = ' ';
  }

  // At "<". False for a tag without an end.
  bool ReadTag() {
    const Unit* const first = at + 1;
    const Unit* const end = FindTagEnd(first, last);
    if (end == last) return false;
    at = end + 1;
    const Unit* name = first;
    while (name != end && Rules::IsSpace(*name)) ++name;
    if (*name == '!' || *name == '?') return true;
    const bool isClosing = *name == '/';
    if (isClosing) ++name;
    switch (KindOf(LocalName(name, end))) {
      case TagKind::kRun:
        inRun = !isClosing && !ClosesItself(first, end);
        break;
      case TagKind::kBreak:
        AppendBlank();
        break;
      case TagKind::kOther:
        break;
    }
    return true;
  }

  // `end` is the tag's last ">"; an earlier one may stand in quotes.
  static View LocalName(const Unit* name, const Unit* end) {
    const Unit* stop = name;
    for (; stop != end && *stop != '/' && *stop != '>' && !Rules::IsSpace(*stop); ++stop) {
      if (*stop == ':') name = stop + 1;
    }
    return {name, static_cast<size_t>(stop - name)};
  }

  static bool ClosesItself(const Unit* first, const Unit* end) {
    while (end != first && (Rules::IsSpace(end[-1]) || end[-1] == '>')) --end;
    return end != first && end[-1] == '/';
  }
};

// Text outside of tags and in CDATA sections.
struct TagStripper : Copier<ByteRules> {
  using Copier<ByteRules>::Copier;
  static constexpr std::string_view kCdata = "<![CDATA[", kCdataEnd = "]]>";

  std::string_view Strip() {
    bool inTag = false;
    while (at != last && GoesOn()) {
      if (std::string_view(at, static_cast<size_t>(last - at)).starts_with(kCdata)) {
        CopyCdata();
      } else if (inTag) {
        SkipInTag(inTag);
      } else if (*at == '<') {
        inTag = true;
        ++at;
      } else if (*at == '&') {
        ReadEntity(*this);
      } else {
        CopyText(last);
      }
    }
    return Stripped();
  }

 private:
  // Behind the tag's end, or at the next "<" in it, with which a CDATA section may begin. The end is
  // looked for once, however many of those stand before it.
  void SkipInTag(bool& inTag) {
    if (tagEnd_ == nullptr || tagEnd_ < at) tagEnd_ = ByteRules::Find(at, last, '>');
    const char* const end = tagEnd_;
    const char* const next = ByteRules::Find(at + 1, std::max(end, at + 1), '<');
    inTag = next < end || end == last;
    at = next < end ? next : std::min(end + 1, last);
  }

  void CopyCdata() {
    at += kCdata.size();
    const std::string_view rest(at, static_cast<size_t>(last - at));
    const size_t size = std::min(rest.find(kCdataEnd), rest.size());
    const char* const end = at + size;
    while (at != end && GoesOn()) {
      if (*at == '<' || *at == '&') *out++ = *at++;
      if (at != end) CopyText(end);
    }
    at = end + std::min(static_cast<size_t>(last - end), kCdataEnd.size());
  }

  const char* tagEnd_ = nullptr;  // the first ">" behind a place that was passed; `last` for none

  // One stretch, or one white space.
  void CopyText(const char* end) {
    if (ByteRules::IsSpace(*at)) {
      if (!EndsInBlank()) *out++ = ' ';
      ++at;
    }
    CopyPlain(end);
  }
};

}  // namespace

bool IsWideSpace(char16_t unit) {
  if (unit < 0x80) return unit == ' ' || (unit >= '\t' && unit <= '\r');
  if (unit < 0x1680) return unit == 0x85 || unit == 0xA0;
  if (unit < 0x2000) return unit == 0x1680;
  return unit <= 0x200A || unit == 0x2028 || unit == 0x2029 || unit == 0x202F || unit == 0x205F ||
         unit == 0x3000;
}

std::u16string_view ExtractRunTextWide(std::u16string_view xml, char16_t* out, const WorkCheck& check) {
  return RunExtractor<WideRules>(xml, out, check).Extract();
}

std::string_view ExtractRunTextBytes(std::string_view xml, char* out, const WorkCheck& check) {
  return RunExtractor<ByteRules>(xml, out, check).Extract();
}

std::string_view StripAllTagsBytes(std::string_view xml, char* out, const WorkCheck& check) {
  return TagStripper(xml, out, check).Strip();
}

}  // namespace quilmark
