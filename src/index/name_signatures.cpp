#include "index/name_signatures.h"

#include "platform/initial_letters.h"

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

// Three units fill 48 bits; the other kinds of gram are told apart by a bit above them.
constexpr uint64_t kSingleUnit = uint64_t{1} << 48;
constexpr uint64_t kInitials = uint64_t{1} << 49;

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
  uint64_t* words;  // of row 0
  uint64_t bit;

  void Set(uint64_t gram) const {
    const RowPair rows = RowsOfGram(gram);
    words[rows.first * kPageWords] |= bit;
    words[rows.second * kPageWords] |= bit;
  }
};

BlockColumn ColumnOf(NameSignatures& signatures, uint32_t text) {
  const uint32_t block = text / kTextsPerMark % kBlocksPerPage;
  return {signatures.pages[text / kTextsPerPage].get()->data() + block / 64,
          uint64_t{1} << (block % 64)};
}

void AddRows(SignatureTest& test, uint64_t gram) {
  if (test.count + 2 > SignatureTest::kMostRows) return;
  const RowPair rows = RowsOfGram(gram);
  test.rows[test.count++] = static_cast<uint16_t>(rows.first);
  test.rows[test.count++] = static_cast<uint16_t>(rows.second);
}

}  // namespace

bool AddToSignatures(NameSignatures& signatures, uint32_t text, std::u16string_view folded) {
  while (signatures.pages.size() <= text / kTextsPerPage) {
    signatures.pages.push_back(std::make_unique<BlockMask[]>(kSignatureRows));
  }
  const BlockColumn column = ColumnOf(signatures, text);
  return ForEachGram(folded, [&](uint64_t gram) { column.Set(gram); });
}

void AddInitialsToSignatures(NameSignatures& signatures, uint32_t text, std::u16string_view folded) {
  const BlockColumn column = ColumnOf(signatures, text);
  ForEachInitialsGram(InitialsStemOf(folded), [&](uint64_t gram) { column.Set(gram); });
}

void AddNeedle(SignatureTest& test, std::u16string_view foldedNeedle) {
  ForEachGram(foldedNeedle, [&](uint64_t gram) { AddRows(test, gram); });
}

void AddInitialsPattern(SignatureTest& test, std::u16string_view pattern) {
  ForEachInitialsGram(pattern, [&](uint64_t gram) { AddRows(test, gram); });
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
