#include "content/archive/ascii_text.h"

#ifdef __SSE2__
#include <emmintrin.h>
#endif

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "content/archive/tag_end.h"
#include "content/archive/xml_entity.h"

namespace quilmark {

namespace {

bool IsPlainSpace(char byte) { return byte == ' ' || byte == '\t' || byte == '\n' || byte == '\r'; }

// White space to some of the readers and not to others, or part of a longer character.
bool IsDoubtful(char byte) {
  const auto code = static_cast<unsigned char>(byte);
  return code >= 0x80 || (code < 0x20 && !IsPlainSpace(byte));
}

class AsciiTaker {
 public:
  AsciiTaker(std::string_view xml, char* runRoom, char* allRoom)
      : at_(xml.data()), last_(xml.data() + xml.size()), run_(runRoom), all_(allRoom) {}

  std::optional<AsciiTexts> Take() {
    while (at_ != last_) {
      if (*at_ == '<' ? !ReadTag() : !TakeText()) return std::nullopt;
    }
    const std::string_view inRuns(run_, runSize_);
    return AsciiTexts{inRuns, isSame_ ? inRuns : std::string_view(all_, allSize_)};
  }

 private:
  // Up to the next tag. False where the readers may differ.
  bool TakeText() {
    char* const begin = run_ + runSize_;
    char* out = begin;
    while (at_ != last_ && *at_ != '<') {
      CopyPlain(out);
      if (at_ == last_ || *at_ == '<') break;
      if (*at_ == 0 || (*at_ == '&' && !ReadEntity(out))) return false;
      if (at_ != last_ && *at_ != '<' && *at_ != '&') TakeOne(out);
    }
    Keep(begin, static_cast<size_t>(out - begin));
    return true;
  }

  // Hands on what is neither white space nor markup nor beyond ASCII. Writes up to a block too much.
  void CopyPlain(char*& out) {
#ifdef __SSE2__
    constexpr ptrdiff_t kBlock = 16;
    while (last_ - at_ >= kBlock) {
      const __m128i block = _mm_loadu_si128(reinterpret_cast<const __m128i*>(at_));
      _mm_storeu_si128(reinterpret_cast<__m128i*>(out), block);
      const __m128i low = _mm_cmplt_epi8(block, _mm_set1_epi8(0x21));  // and all beyond ASCII
      const __m128i markup = _mm_or_si128(_mm_cmpeq_epi8(block, _mm_set1_epi8('<')),
                                          _mm_cmpeq_epi8(block, _mm_set1_epi8('&')));
      const auto stops = static_cast<uint32_t>(_mm_movemask_epi8(_mm_or_si128(low, markup)));
      const int plain = stops == 0 ? kBlock : __builtin_ctz(stops);
      at_ += plain;
      out += plain;
      if (stops != 0) return;
    }
#endif
    while (at_ != last_ && static_cast<signed char>(*at_) > ' ' && *at_ != '<' && *at_ != '&')
      *out++ = *at_++;
  }

  // One byte at which CopyPlain stops, unless the loop is to look at it.
  void TakeOne(char*& out) {
    const auto code = static_cast<unsigned char>(*at_);
    if (code == 0) return;
    const bool isDropped = code >= 0x80 || code == ' ' || (code >= '\t' && code <= '\r');
    if (!isDropped) *out++ = *at_;
    ++at_;
  }

  // At "&". False for one that is not the same character to all readers.
  bool ReadEntity(char*& out) {
    constexpr ptrdiff_t kFarthestEnd = 16;
    const char* const name = at_ + 1;
    const char* const limit = name + std::min(last_ - name, kFarthestEnd);
    const char* const end = std::find(name, limit, ';');
    if (end == limit) return false;
    const auto value = ValueOfEntity(std::string_view(name, static_cast<size_t>(end - name)));
    if (!value || *value == 0 || *value >= 0x1'0000) return false;
    const bool isKept = *value < 0x80 && *value != ' ' && (*value < '\t' || *value > '\r');
    if (isKept) *out++ = static_cast<char>(*value);
    at_ = end + 1;
    return true;
  }

  // Text that stands behind that of the runs: it is one of them, or only of the whole.
  void Keep(const char* text, size_t size) {
    if (size == 0) return;
    if (isSame_ && !inRun_) {
      std::memcpy(all_, run_, runSize_);
      allSize_ = runSize_;
      isSame_ = false;
    }
    if (!isSame_) {
      std::memcpy(all_ + allSize_, text, size);
      allSize_ += size;
    }
    if (inRun_) runSize_ += size;
  }

  // At "<". False where the readers may see another end of the tag or another name.
  bool ReadTag() {
    const char* const first = at_ + 1;
    const char* const end = FindPlainTagEnd(first, last_);
    if (end == nullptr) return false;
    at_ = end + 1;
    const char* name = first;
    while (IsPlainSpace(*name)) ++name;
    if (*name == '!')
      return !std::string_view(name, static_cast<size_t>(end - name)).starts_with("![CDATA[");
    if (*name == '?') return true;
    const bool isClosing = *name == '/';
    if (isClosing) ++name;
    const char* stop = name;
    for (; *stop != '/' && *stop != '>' && !IsPlainSpace(*stop); ++stop) {
      if (IsDoubtful(*stop)) return false;
      if (*stop == ':') name = stop + 1;
    }
    const char letter = stop - name == 1 ? static_cast<char>(*name | 0x20) : ' ';
    if (letter != 't' && letter != 'v') return true;
    const char* before = end;
    while (before != first && IsPlainSpace(before[-1])) --before;
    if (before != first && IsDoubtful(before[-1])) return false;
    inRun_ = !isClosing && !(before != first && before[-1] == '/');
    return true;
  }

  const char* at_;
  const char* last_;
  char* run_;
  char* all_;
  size_t runSize_ = 0;
  size_t allSize_ = 0;
  bool inRun_ = false;
  bool isSame_ = true;  // so far no text stood outside of runs, and nothing is in `all_`
};

}  // namespace

std::optional<AsciiTexts> TakeAsciiTexts(std::string_view xml, char* runRoom, char* allRoom) {
  return AsciiTaker(xml, runRoom, allRoom).Take();
}

}  // namespace quilmark
