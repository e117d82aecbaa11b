#include "index/name_signatures.h"

namespace quilmark {

namespace {

struct RowPair {
  uint32_t first, second;
};

// Upper bits of one multiplication serve both rows.
RowPair RowsOfGram(uint64_t gram) {
  const uint64_t hash = gram * 0x9E37'79B9'7F4A'7C15u;
  return {static_cast<uint32_t>(hash >> 52), static_cast<uint32_t>(hash >> 40) & (kSignatureRows - 1)};
}

// Three units fill 48 bits; a single unit is told apart by a bit above them.
constexpr uint64_t kSingleUnit = uint64_t{1} << 48;

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
    }
    if (i >= 2) visit(window);
  }
  return aboveAscii;
}

}  // namespace

bool AddToSignatures(NameSignatures& signatures, uint32_t text, std::u16string_view folded) {
  const size_t page = text / kTextsPerPage;
  while (signatures.pages.size() <= page) {
    signatures.pages.push_back(std::make_unique<BlockMask[]>(kSignatureRows));
  }
  const uint32_t block = text / kTextsPerMark % kBlocksPerPage;
  const uint64_t bit = uint64_t{1} << (block % 64);
  uint64_t* const column = signatures.pages[page].get()->data() + block / 64;
  return ForEachGram(folded, [&](uint64_t gram) {
    const RowPair rows = RowsOfGram(gram);
    column[rows.first * kPageWords] |= bit;
    column[rows.second * kPageWords] |= bit;
  });
}

void AddNeedle(SignatureTest& test, std::u16string_view foldedNeedle) {
  ForEachGram(foldedNeedle, [&](uint64_t gram) {
    if (test.count + 2 > SignatureTest::kMostRows) return;
    const RowPair rows = RowsOfGram(gram);
    test.rows[test.count++] = static_cast<uint16_t>(rows.first);
    test.rows[test.count++] = static_cast<uint16_t>(rows.second);
  });
}

BlockMask CandidateBlocks(const NameSignatures& signatures, size_t page, const SignatureTest& test) {
  BlockMask blocks;
  blocks.fill(~uint64_t{0});
  const BlockMask* const rows = signatures.pages[page].get();
  for (size_t i = 0; i < test.count; ++i) {
    const BlockMask& row = rows[test.rows[i]];
    for (size_t word = 0; word < kPageWords; ++word) blocks[word] &= row[word];
  }
  return blocks;
}

size_t MemoryOf(const NameSignatures& signatures) {
  return signatures.pages.size() * (kSignatureRows * sizeof(BlockMask) + sizeof(signatures.pages[0]));
}

}  // namespace quilmark
