#include "platform/utf.h"

#include <cstdint>
#include <cstring>

namespace quilmark {

namespace {

constexpr size_t kBlock = 8;  // bytes of ASCII taken at once
constexpr uint64_t kEveryByte = 0x0101'0101'0101'0101;
constexpr char16_t kEscapedByte = 0xDC00;  // plus the byte that is no part of UTF-8

uint64_t LoadBlock(const char* bytes) {
  uint64_t block;
  std::memcpy(&block, bytes, sizeof block);
  return block;
}

bool IsAsciiBlock(uint64_t block) { return (block & (0x80 * kEveryByte)) == 0; }

// REQUIRES an ASCII block.
bool HasBackslash(uint64_t block) {
  const uint64_t zeroWhereFound = block ^ (0x5C * kEveryByte);
  return ((zeroWhereFound - kEveryByte) & (0x80 * kEveryByte)) != 0;
}

struct Sequence {
  char32_t character = 0;
  size_t length = 0;  // bytes; 0 where no well-formed sequence begins
};

struct SequenceForm {
  size_t length = 0;  // 0: a byte that begins no sequence
  char32_t leadBits = 0;
  char32_t least = 0;  // below it the form is longer than needed
};

SequenceForm FormOf(unsigned char lead) {
  if (lead < 0x80) return {1, lead, 0};
  if (lead < 0xC2) return {};
  if (lead < 0xE0) return {2, lead & 0x1Fu, 0x80};
  if (lead < 0xF0) return {3, lead & 0x0Fu, 0x800};
  if (lead < 0xF5) return {4, lead & 0x07u, 0x1'0000};
  return {};
}

Sequence DecodeSequence(std::string_view bytes) {
  const SequenceForm form = FormOf(static_cast<unsigned char>(bytes[0]));
  if (form.length == 0 || form.length > bytes.size()) return {};
  char32_t character = form.leadBits;
  for (size_t i = 1; i < form.length; ++i) {
    const auto next = static_cast<unsigned char>(bytes[i]);
    if ((next & 0xC0) != 0x80) return {};
    character = (character << 6) | (next & 0x3Fu);
  }
  const bool isSurrogate = character >= 0xD800 && character <= 0xDFFF;
  if (character < form.least || character > 0x10'FFFF || isSurrogate) return {};
  return {character, form.length};
}

char16_t* PutCharacter(char32_t character, char16_t* to) {
  if (character < 0x1'0000) {
    *to++ = static_cast<char16_t>(character);
    return to;
  }
  *to++ = static_cast<char16_t>(0xD7C0 + (character >> 10));
  *to++ = static_cast<char16_t>(0xDC00 + (character & 0x3FF));
  return to;
}

enum class Pair { kText, kHost };

char16_t UnitOfMalformed(char byte, Pair pair) {
  if (pair == Pair::kText) return kReplacement;
  return static_cast<char16_t>(kEscapedByte + static_cast<unsigned char>(byte));
}

// True when each byte of the block becomes the unit of the same number.
template <Pair pair>
bool IsPlain(uint64_t block) {
  return IsAsciiBlock(block) && (pair == Pair::kText || !HasBackslash(block));
}

// Appends `bytes`. One unit a byte is the most that can come out, so the room is made once.
template <Pair pair>
void AppendDecoded(std::string_view bytes, std::u16string& out) {
  const size_t before = out.size();
  out.resize(before + bytes.size());
  char16_t* to = out.data() + before;
  size_t i = 0;
  while (i < bytes.size()) {
    if (bytes.size() - i >= kBlock && IsPlain<pair>(LoadBlock(bytes.data() + i))) {
      for (size_t k = 0; k < kBlock; ++k) to[k] = static_cast<unsigned char>(bytes[i + k]);
      to += kBlock;
      i += kBlock;
      continue;
    }
    const Sequence next = DecodeSequence(bytes.substr(i));
    if (next.length == 0) {
      *to++ = UnitOfMalformed(bytes[i++], pair);
      continue;
    }
    const bool isEscaped = pair == Pair::kHost && next.character == U'\\';
    to = PutCharacter(isEscaped ? kNameBackslash : next.character, to);
    i += next.length;
  }
  out.resize(static_cast<size_t>(to - out.data()));
}

void AppendEncoded(char32_t character, std::string& out) {
  const auto put = [&out](char32_t byte) { out.push_back(static_cast<char>(byte)); };
  const auto putRest = [&](unsigned shift) { put(0x80 | ((character >> shift) & 0x3F)); };
  if (character < 0x80) return put(character);
  if (character < 0x800) {
    put(0xC0 | (character >> 6));
  } else if (character < 0x1'0000) {
    put(0xE0 | (character >> 12));
    putRest(6);
  } else {
    put(0xF0 | (character >> 18));
    putRest(12);
    putRest(6);
  }
  putRest(0);
}

bool StandsForAByte(char16_t unit) {
  return unit == kNameBackslash || (unit >= kEscapedByte + 0x80 && unit <= kEscapedByte + 0xFF);
}

template <Pair pair>
std::string Encode(std::u16string_view text) {
  std::string out;
  out.reserve(text.size() + text.size() / 2);
  for (size_t i = 0; i < text.size(); ++i) {
    const char16_t unit = text[i];
    if (!IsSurrogate(unit)) {
      AppendEncoded(unit, out);
    } else if (IsHighSurrogate(unit) && i + 1 < text.size() && IsLowSurrogate(text[i + 1])) {
      const char32_t high = unit & 0x3FFu;
      AppendEncoded(0x1'0000 + (high << 10) + (text[++i] & 0x3FFu), out);
    } else if (pair == Pair::kHost && StandsForAByte(unit)) {
      out.push_back(static_cast<char>(unit & 0xFF));
    } else {
      AppendEncoded(kReplacement, out);
    }
  }
  return out;
}

}  // namespace

std::u16string FromUtf8(std::string_view bytes) {
  std::u16string text;
  AppendDecoded<Pair::kText>(bytes, text);
  return text;
}

std::string ToUtf8(std::u16string_view text) { return Encode<Pair::kText>(text); }

void AppendFromHostBytes(std::string_view bytes, std::u16string& out) {
  AppendDecoded<Pair::kHost>(bytes, out);
}

std::u16string FromHostBytes(std::string_view bytes) {
  std::u16string name;
  AppendFromHostBytes(bytes, name);
  return name;
}

std::string ToHostBytes(std::u16string_view name) { return Encode<Pair::kHost>(name); }

}  // namespace quilmark
