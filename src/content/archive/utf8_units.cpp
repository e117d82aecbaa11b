#include "content/archive/utf8_units.h"

#include <cstdint>
#include <cstring>

#include "platform/utf.h"

namespace quilmark {

namespace {

constexpr size_t kBlock = 16;

bool IsAsciiBlock(const char* at) {
  uint64_t halves[2];
  std::memcpy(halves, at, kBlock);
  return ((halves[0] | halves[1]) & 0x8080'8080'8080'8080) == 0;
}

// Widens the ASCII at the beginning, block by block. The number of bytes.
size_t WidenAscii(std::string_view bytes, char16_t* out) {
  size_t done = 0;
  for (; bytes.size() - done >= kBlock; done += kBlock) {
    if (!IsAsciiBlock(bytes.data() + done)) break;
    for (size_t i = 0; i < kBlock; ++i) out[done + i] = static_cast<unsigned char>(bytes[done + i]);
  }
  return done;
}

bool IsTail(std::string_view bytes, size_t at) {
  return at < bytes.size() && (static_cast<unsigned char>(bytes[at]) & 0xC0) == 0x80;
}

uint32_t TailBits(char byte) { return static_cast<unsigned char>(byte) & 0x3Fu; }

// The length of the well-formed sequence at `at` and its character; a length of 0 without one.
size_t ReadSequence(std::string_view bytes, size_t at, uint32_t& character) {
  const uint32_t lead = static_cast<unsigned char>(bytes[at]);
  character = lead;
  if (lead < 0x80) return 1;
  if (lead < 0xC2 || lead > 0xF4 || !IsTail(bytes, at + 1)) return 0;
  character = (lead & 0x1F) << 6 | TailBits(bytes[at + 1]);
  if (lead < 0xE0) return 2;
  if (!IsTail(bytes, at + 2)) return 0;
  character = (lead & 0x0F) << 12 | TailBits(bytes[at + 1]) << 6 | TailBits(bytes[at + 2]);
  const bool isSurrogate = character >= 0xD800 && character <= 0xDFFF;
  if (lead < 0xF0) return character < 0x800 || isSurrogate ? 0 : 3;
  if (!IsTail(bytes, at + 3)) return 0;
  character = (lead & 0x07) << 18 | (character & 0xFFF) << 6 | TailBits(bytes[at + 3]);
  return character < 0x1'0000 || character > 0x10'FFFF ? 0 : 4;
}

char16_t* PutUnits(uint32_t character, char16_t* to) {
  if (character < 0x1'0000) {
    *to++ = static_cast<char16_t>(character);
    return to;
  }
  *to++ = static_cast<char16_t>(0xD7C0 + (character >> 10));
  *to++ = static_cast<char16_t>(0xDC00 + (character & 0x3FF));
  return to;
}

}  // namespace

std::optional<size_t> Utf8ToUnits(std::string_view bytes, char16_t* out, MalformedUtf8 malformed) {
  char16_t* to = out;
  size_t at = 0;
  while (at < bytes.size()) {
    const size_t ascii = WidenAscii(bytes.substr(at), to);
    at += ascii;
    to += ascii;
    // One block's worth beyond it, so that the blocks are not tried at every character.
    for (const size_t end = at + kBlock; at < bytes.size() && at < end;) {
      uint32_t character = 0;
      const size_t length = ReadSequence(bytes, at, character);
      if (length == 0 && malformed == MalformedUtf8::kRefused) return std::nullopt;
      to = PutUnits(length == 0 ? kReplacement : character, to);
      at += length == 0 ? 1 : length;
    }
  }
  return static_cast<size_t>(to - out);
}

bool IsUtf8(std::string_view bytes) {
  size_t at = 0;
  while (at < bytes.size()) {
    while (bytes.size() - at >= kBlock && IsAsciiBlock(bytes.data() + at)) at += kBlock;
    for (const size_t end = at + kBlock; at < bytes.size() && at < end;) {
      uint32_t character = 0;
      const size_t length = ReadSequence(bytes, at, character);
      if (length == 0) return false;
      at += length;
    }
  }
  return true;
}

}  // namespace quilmark
