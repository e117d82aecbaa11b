#include "platform/text.h"

#include <algorithm>
#include <cstring>

namespace quilmark {

namespace {

constexpr size_t kUnitsPerWord = 4;
constexpr size_t kUnitsPerBlock = 2 * kUnitsPerWord;
constexpr uint64_t kEveryUnit = 0x0001'0001'0001'0001;
constexpr uint64_t kAboveAscii = 0xFF80 * kEveryUnit;

uint64_t LoadWord(const char16_t* from) {
  uint64_t word;
  std::memcpy(&word, from, sizeof word);
  return word;
}

void StoreWord(uint64_t word, char16_t* to) { std::memcpy(to, &word, sizeof word); }

// Four ASCII units at once. Each sum stays below 256, so that no carry leaves its unit, and has bit 7
// set where the unit is not below the letter.
uint64_t FoldAsciiWord(uint64_t word) {
  const uint64_t fromA = word + (0x80 - 'A') * kEveryUnit;
  const uint64_t aboveZ = word + (0x80 - ('Z' + 1)) * kEveryUnit;
  const uint64_t isUpper = fromA & ~aboveZ & (0x80 * kEveryUnit);
  return word + (isUpper >> 2);
}

void FoldByTable(const char16_t* from, char16_t* to, size_t size) {
  for (size_t i = 0; i < size; ++i) to[i] = FoldUnit(from[i]);
}

void FoldBlock(const char16_t* from, char16_t* to) {
  const uint64_t low = LoadWord(from);
  const uint64_t high = LoadWord(from + kUnitsPerWord);
  if (((low | high) & kAboveAscii) != 0) return FoldByTable(from, to, kUnitsPerBlock);
  StoreWord(FoldAsciiWord(low), to);
  StoreWord(FoldAsciiWord(high), to + kUnitsPerWord);
}

}  // namespace

void FoldUnits(const char16_t* from, char16_t* to, size_t size) {
  if (size < kUnitsPerBlock) return FoldByTable(from, to, size);
  const size_t lastBlock = size - kUnitsPerBlock;
  for (size_t i = 0; i < lastBlock; i += kUnitsPerBlock) FoldBlock(from + i, to + i);
  // The last block overlaps the one before: folding twice in place changes nothing.
  FoldBlock(from + lastBlock, to + lastBlock);
}

std::u16string FoldText(std::u16string_view text) {
  std::u16string folded(text.size(), u'\0');
  FoldUnits(text.data(), folded.data(), text.size());
  return folded;
}

std::weak_ordering CompareNoCase(std::u16string_view a, std::u16string_view b) {
  const size_t common = std::min(a.size(), b.size());
  for (size_t i = 0; i < common; ++i) {
    if (a[i] == b[i]) continue;
    const char16_t left = FoldUnit(a[i]);
    const char16_t right = FoldUnit(b[i]);
    if (left != right) return left <=> right;
  }
  return a.size() <=> b.size();
}

bool EqualNoCase(std::u16string_view a, std::u16string_view b) {
  return a.size() == b.size() && CompareNoCase(a, b) == 0;
}

std::u16string ComparablePath(std::u16string_view path) {
  std::u16string comparable = FoldText(path);
  std::replace(comparable.begin(), comparable.end(), u'/', u'\\');
  return comparable;
}

}  // namespace quilmark
