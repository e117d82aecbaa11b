// One bit a record, 64 to a word: word n holds the bits of the records 64n to 64n + 63, those whose
// texts begin at mark n of a NamePool. Guarded by the lock of the table that holds them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace quilmark {

struct RecordBits {
  std::vector<uint64_t> words;
};

// Makes room for `count` records; new bits are clear. std::bad_alloc where memory runs out; the bits are
// then as before.
inline void GrowBits(RecordBits& bits, uint32_t count) {
  const size_t wordCount = (static_cast<size_t>(count) + 63) / 64;
  if (bits.words.size() < wordCount) bits.words.resize(wordCount);
}

// The bit of record `index`. REQUIRES room for it.
[[nodiscard]] inline bool TestBit(const RecordBits& bits, uint32_t index) {
  return (bits.words[index / 64] >> (index % 64) & 1) != 0;
}

// Sets the bit of record `index`. REQUIRES room for it.
inline void SetBit(RecordBits& bits, uint32_t index) {
  bits.words[index / 64] |= uint64_t{1} << (index % 64);
}

// Clears the bit of record `index`. REQUIRES room for it.
inline void ClearBit(RecordBits& bits, uint32_t index) {
  bits.words[index / 64] &= ~(uint64_t{1} << (index % 64));
}

}  // namespace quilmark
