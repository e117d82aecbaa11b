#include "content/archive/tag_end.h"

#ifdef __SSE2__
#include <emmintrin.h>
#endif

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace quilmark {

namespace {

// Looks at one unit after the other. `quote` is the one that is open, 0 for none.
template <typename Unit>
const Unit* FindTagEndPlainly(const Unit* first, const Unit* last, Unit quote) {
  for (const Unit* at = first; at != last; ++at) {
    if (quote != 0) {
      if (*at == quote) quote = 0;
    } else if (*at == '>') {
      return at;
    } else if (*at == '"' || *at == '\'') {
      quote = *at;
    }
  }
  return last;
}

#ifdef __SSE2__
constexpr int kBlock = 16;

// Bit i for byte i of the block.
uint32_t Where(__m128i block, char byte) {
  return static_cast<uint32_t>(_mm_movemask_epi8(_mm_cmpeq_epi8(block, _mm_set1_epi8(byte))));
}
#endif

}  // namespace

// Most tags have no single quote: whether a '>' stands outside then hangs on the number of double ones
// before it.
const char* FindTagEnd(const char* first, const char* last) {
#ifdef __SSE2__
  bool isOpen = false;
  for (; last - first >= kBlock; first += kBlock) {
    const __m128i block = _mm_loadu_si128(reinterpret_cast<const __m128i*>(first));
    if (Where(block, '\'') != 0) break;
    const uint32_t quotes = Where(block, '"');
    for (uint32_t ends = Where(block, '>'); ends != 0; ends &= ends - 1) {
      const uint32_t before = quotes & (ends - 1) & ~ends;
      if ((__builtin_parity(before) != 0) == isOpen) return first + __builtin_ctz(ends);
    }
    if (__builtin_parity(quotes) != 0) isOpen = !isOpen;
  }
  return FindTagEndPlainly(first, last, isOpen ? '"' : '\0');
#else
  return FindTagEndPlainly(first, last, '\0');
#endif
}

const char* FindPlainTagEnd(const char* first, const char* last) {
#ifdef __SSE2__
  const char* at = first;
  bool isOpen = false;
  for (; last - at >= kBlock; at += kBlock) {
    const __m128i block = _mm_loadu_si128(reinterpret_cast<const __m128i*>(at));
    const uint32_t ends = Where(block, '>');
    const uint32_t before = (ends - 1) & ~ends;  // all bits without an end
    if (((Where(block, '\'') | Where(block, '<')) & before) != 0) break;
    if (__builtin_parity(Where(block, '"') & before) != 0) isOpen = !isOpen;
    if (ends != 0) return isOpen ? nullptr : at + __builtin_ctz(ends);
  }
#endif
  const char* const end = FindTagEnd(first, last);
  const auto size = static_cast<size_t>(end - first);
  const bool isPlain =
      std::memchr(first, '>', size) == nullptr && std::memchr(first, '<', size) == nullptr;
  return end != last && isPlain ? end : nullptr;
}

const char16_t* FindTagEnd(const char16_t* first, const char16_t* last) {
  return FindTagEndPlainly(first, last, u'\0');
}

}  // namespace quilmark
