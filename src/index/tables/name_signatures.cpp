#include "index/tables/name_signatures.h"

#include <algorithm>

#include "platform/initial_letters.h"

namespace quilmark {

namespace {

using GramRows = std::array<uint32_t, kRowsPerGram>;

// Thirteen bits a row out of one hash; the second multiplication makes its lower half as good as the
// upper.
GramRows RowsOfGram(uint64_t gram) {
  uint64_t hash = gram * 0x9E37'79B9'7F4A'7C15u;
  hash = (hash ^ hash >> 32) * 0xD6E8'FEB8'6659'FD93u;
  GramRows rows;
  for (uint32_t i = 0; i < kRowsPerGram; ++i) {
    rows[i] = static_cast<uint32_t>(hash >> (51 - 13 * i)) & (kSignatureRows - 1);
  }
  return rows;
}

// Three units fill 48 bits; the other kinds of gram are told apart by a bit above them.
constexpr uint64_t kSingleUnit = uint64_t{1} << 48;
constexpr uint64_t kInitials = uint64_t{1} << 49;
constexpr uint64_t kSingleUnitAgain = uint64_t{1} << 50;

// Calls `visit` with each gram of the text.
template <typename Visit>
bool ForEachGram(std::u16string_view text, Visit visit) {
  bool aboveAscii = false;
  uint64_t window = 0;
  for (size_t i = 0; i < text.size(); ++i) {
    const uint64_t unit = text[i];
    window = window >> 16 | unit << 32;
    if (unit >= 0x80) {
      aboveAscii = true;
      visit(unit | kSingleUnit);
      visit(unit | kSingleUnitAgain);  // twice the rows: it may be all that a needle has
    }
    if (i >= 2) visit(window);
  }
  return aboveAscii;
}

// Calls `visit` with each pair of the key that `units` make.
template <typename Visit>
void ForEachInitialsGram(std::u16string_view units, Visit visit) {
  uint64_t before = 0;
  for (const char16_t unit : units) {
    const uint64_t key = InitialsKeyUnitOf(unit);
    if (key == 0) continue;
    if (before != 0) visit(before | key << 16 | kInitials);
    before = key;
  }
}

// The bits of one text's block.
struct BlockColumn {
  BlockMask* rows;
  BlockMask bit;

  void Set(uint64_t gram) const {
    for (const uint32_t row : RowsOfGram(gram)) rows[row] |= bit;
  }
};

BlockColumn ColumnOf(NameSignatures& signatures, uint32_t text) {
  return {signatures.pages[text / kTextsPerPage].get(),
          BlockMask{1} << (text / kTextsPerMark % kBlocksPerPage)};
}

void AddRows(SignatureTest& test, uint64_t gram) {
  if (test.count + kRowsPerGram > SignatureTest::kMostRows) return;
  for (const uint32_t row : RowsOfGram(gram)) test.rows[test.count++] = static_cast<uint16_t>(row);
}

}  // namespace

void ReserveSignature(NameSignatures& signatures, uint32_t text) {
  while (signatures.pages.size() <= text / kTextsPerPage) {
    signatures.pages.push_back(std::make_unique<BlockMask[]>(kSignatureRows));
  }
}

bool AddToSignatures(NameSignatures& signatures, uint32_t text, std::u16string_view folded) {
  ReserveSignature(signatures, text);
  const BlockColumn column = ColumnOf(signatures, text);
  return ForEachGram(folded, [&](uint64_t gram) { column.Set(gram); });
}

void AddInitialsToSignatures(NameSignatures& signatures, uint32_t text, std::u16string_view folded) {
  const BlockColumn column = ColumnOf(signatures, text);
  ForEachInitialsGram(InitialsStemOf(folded), [&](uint64_t gram) { column.Set(gram); });
}

void AddSearchAids(NameSignatures& signatures, RecordBits& initials, uint32_t text,
                   std::u16string_view folded) {
  const bool aboveAscii = AddToSignatures(signatures, text, folded);
  if (!aboveAscii || InitialsStemOf(folded).empty()) return;
  SetBit(initials, text);
  AddInitialsToSignatures(signatures, text, folded);
}

void ClearBlocks(NameSignatures& signatures, uint32_t first, uint32_t last) {
  while (first < last) {
    const uint32_t page = first / kBlocksPerPage, pageFirst = page * kBlocksPerPage;
    const uint32_t end = std::min(last - pageFirst, kBlocksPerPage);
    BlockMask kept = (BlockMask{1} << (first - pageFirst)) - 1;
    if (end < kBlocksPerPage) kept |= ~BlockMask{0} << end;
    for (uint32_t row = 0; row < kSignatureRows; ++row) signatures.pages[page][row] &= kept;
    first = pageFirst + end;
  }
}

void AddNeedle(SignatureTest& test, std::u16string_view foldedNeedle) {
  ForEachGram(foldedNeedle, [&](uint64_t gram) { AddRows(test, gram); });
}

void AddInitialsPattern(SignatureTest& test, std::u16string_view pattern) {
  ForEachInitialsGram(pattern, [&](uint64_t gram) { AddRows(test, gram); });
}

BlockMask CandidateBlocks(const NameSignatures& signatures, size_t page, const SignatureTest& test) {
  const BlockMask* const rows = signatures.pages[page].get();
  BlockMask blocks = ~BlockMask{0};
  for (size_t i = 0; i < test.count && blocks != 0; ++i) blocks &= rows[test.rows[i]];
  return blocks;
}

size_t MemoryOf(const NameSignatures& signatures) {
  return signatures.pages.size() * (kSignatureRows * sizeof(BlockMask) + sizeof(signatures.pages[0]));
}

}  // namespace quilmark
