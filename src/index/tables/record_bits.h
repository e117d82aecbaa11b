// One bit a record, 64 to a word: word n speaks of the records 64n to 64n + 63, as mark n of a NamePool
// does.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace quilmark {

struct RecordBits {
  std::vector<uint64_t> words;
};

// Makes room for `count` records; new bits are clear.
inline void GrowBits(RecordBits& bits, uint32_t count) {
  const size_t wordCount = (static_cast<size_t>(count) + 63) / 64;
  if (bits.words.size() < wordCount) bits.words.resize(wordCount);
}

inline bool TestBit(const RecordBits& bits, uint32_t index) {
  return (bits.words[index / 64] >> (index % 64) & 1) != 0;
}

inline void SetBit(RecordBits& bits, uint32_t index) {
  bits.words[index / 64] |= uint64_t{1} << (index % 64);
}

inline void ClearBit(RecordBits& bits, uint32_t index) {
  bits.words[index / 64] &= ~(uint64_t{1} << (index % 64));
}

}  // namespace quilmark
