// Small signatures that tell a search which names it need not read.
//
// Names are taken in blocks of 64. A row is a bit for every block, set when a name of the block holds a
// gram that hashes to the row; a needle can only stand in blocks whose bits are set in the rows of all
// its grams. Grams are three units in a row, and single units above ASCII, three rows each. 64 blocks
// share a page: its 64 KiB stay in the processor's nearest caches while its names are added.
//
// A name that is gone stays in until its block is cleared: a signature may promise too much, never too
// little. 16 bytes a name.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

#include "index/tables/name_pool.h"
#include "index/tables/record_bits.h"

namespace quilmark {

inline constexpr uint32_t kSignatureRows = 8'192;
inline constexpr uint32_t kRowsPerGram = 3;
inline constexpr uint32_t kBlocksPerPage = 64;
inline constexpr uint32_t kTextsPerPage = kBlocksPerPage * kTextsPerMark;

// One bit for each block of a page.
using BlockMask = uint64_t;
static_assert(8 * sizeof(BlockMask) == kBlocksPerPage);
static_assert(kSignatureRows * sizeof(BlockMask) == 16 * kTextsPerPage, "16 bytes a name");

// The rows of all blocks of one pool. Guarded by the volume's indexLock.
struct NameSignatures {
  std::vector<std::unique_ptr<BlockMask[]>> pages;  // kSignatureRows masks a page
};

// Makes room for text number `text`, so that adding it cannot fail. std::bad_alloc where memory runs
// out.
void ReserveSignature(NameSignatures& signatures, uint32_t text);

// Adds text number `text` of a pool by its folded spelling. Returns whether it holds a unit above ASCII.
bool AddToSignatures(NameSignatures& signatures, uint32_t text, std::u16string_view folded);

// Adds the key of initials of the same text, for which AddToSignatures was called before.
void AddInitialsToSignatures(NameSignatures& signatures, uint32_t text, std::u16string_view folded);

// Both at once: what a search needs to know of text number `text`. `initials` tells which texts have a
// key; the bit of this one is clear before.
void AddSearchAids(NameSignatures& signatures, RecordBits& initials, uint32_t text,
                   std::u16string_view folded);

// Takes out whatever was added to the blocks [first, last): text n belongs to block n / kTextsPerMark.
void ClearBlocks(NameSignatures& signatures, uint32_t first, uint32_t last);

// Rows that a block must have to hold all the needles given to AddNeedle.
struct SignatureTest {
  static constexpr size_t kMostRows = 30;  // further grams would hardly narrow the choice
  std::array<uint16_t, kMostRows> rows{};
  size_t count = 0;
};

// Narrows the test to blocks that may hold `foldedNeedle` as well.
void AddNeedle(SignatureTest& test, std::u16string_view foldedNeedle);

// Narrows the test to blocks that may hold a name whose key of initials contains `pattern`.
void AddInitialsPattern(SignatureTest& test, std::u16string_view pattern);

// Blocks of page `page` that may hold the needles; all of them for an empty test. REQUIRES that the page
// is there.
[[nodiscard]] BlockMask CandidateBlocks(const NameSignatures& signatures, size_t page,
                                        const SignatureTest& test);

// Bytes taken from the heap.
size_t MemoryOf(const NameSignatures& signatures);

}  // namespace quilmark
