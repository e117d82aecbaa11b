// The name test over a whole volume, 256 records at a time.
//
// The answers are those of MatchName (and MatchesInitials behind it) on every record, in record order.
// What makes it fast: signatures rule out most blocks of 64 names, the rest is scanned as one long text
// by a vector kernel, and a record is looked at only on a hit. See docs/decisions/0002-name-scan.md.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "index/tables/volume_index.h"
#include "search/query/query.h"
#include "search/scan/scan_kernel.h"

namespace quilmark {

// One AND-group: the term that is looked for by the kernel, and those tested on its hits.
struct CompiledGroup {
  Needle lead;
  std::vector<std::u16string> others;
  SignatureTest signatures;  // of all terms
};

struct CompiledQuery {
  QueryGroups groups;  // prepared; the plain test for names that no scan can run over
  std::vector<CompiledGroup> compiled;
  std::u16string initials;  // pattern of MatchesInitials; empty: off
  SignatureTest initialsSignatures;
  bool matchesAll = false;  // no groups
};

// `prepared` comes from PrepareNameGroups. A group with a NUL in a term finds nothing.
CompiledQuery CompileQuery(QueryGroups prepared, bool initialsOn);

// Records of one test: a step between two polls of the generation.
inline constexpr uint32_t kGranule = 256;
using GranuleHits = std::array<uint64_t, kGranule / 64>;

// The texts that a scan runs over, with their search aids: one bit or a few a text.
struct ScannedTexts {
  const NamePool& pool;
  const NameSignatures& signatures;
  const RecordBits& hidden;
  const RecordBits& initials;
  const std::vector<uint32_t>* owners = nullptr;  // the record of each text; null: of the same number
};

// The names that stand in their own place: text n is that of record n.
inline ScannedTexts OwnTexts(const VolumeIndex& volume) {
  return {volume.names, volume.signatures, volume.hidden, volume.initials};
}

// Hits as bits of records; room is taken for the pages of 4,096 records that hold one.
struct PagedHits {
  std::vector<BlockMask> blocks;  // of each page, those with a hit; empty before the first hit
  std::vector<uint32_t> places;   // of each page with a hit, in `words`
  std::vector<std::array<uint64_t, kBlocksPerPage>> words;
};

// A scan in progress. The volume's indexLock is held shared from the first call to the last.
struct NameScan {
  const VolumeIndex& volume;
  const CompiledQuery& query;
  ScanKernel kernel = BestScanKernel();
  ScannedTexts texts = OwnTexts(volume);

  PagedHits apartHits;  // among the names that stand apart

  // Candidate blocks of the page that the scan is on: one mask a group, and all that may bring a hit.
  size_t page = SIZE_MAX;
  std::vector<BlockMask> groupBlocks;
  BlockMask initialsBlocks = 0;
  BlockMask anyBlocks = 0;
  size_t chunk = 0;  // of the pool, where the granule begins
};

// Looks at the names that stand apart; comes before the first granule. Asks `isWanted` again and again;
// false if that was.
[[nodiscard]] bool ScanApart(NameScan& scan, const std::function<bool()>& isWanted);

// The first granule at or behind `granule` that may hold a hit; the count of granules if none does.
uint32_t NextGranule(NameScan& scan, uint32_t granule);

// The hits of one granule: bit n of word w is record 256 * granule + 64 * w + n. Granules in ascending
// order.
GranuleHits ScanGranule(NameScan& scan, uint32_t granule);

// Granules of a volume of `records` records.
inline uint32_t GranuleCount(uint32_t records) {
  return static_cast<uint32_t>((uint64_t{records} + kGranule - 1) / kGranule);
}

}  // namespace quilmark
