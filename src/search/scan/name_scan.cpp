#include "search/scan/name_scan.h"

#include <algorithm>
#include <bit>

#include "search/query/query.h"
#include "search/scan/initials.h"

namespace quilmark {

namespace {

constexpr uint32_t kGranuleBlocks = kGranule / kTextsPerMark;
constexpr uint32_t kGranulesPerPage = kTextsPerPage / kGranule;

// Above this share of a page's blocks the skipping costs more than the scan of the rest.
constexpr int kDenseBlocks = kBlocksPerPage * 6 / 10;

// A name is tested up to its first NUL.
bool CanMatch(const std::vector<std::u16string>& group) {
  return std::none_of(group.begin(), group.end(),
                      [](const std::u16string& term) { return term.find(u'\0') != term.npos; });
}

// The term that the fewest names hold, as far as its length and its rarest unit tell.
size_t RarestTerm(const std::vector<std::u16string>& group) {
  const auto rank = [](const std::u16string& term) {
    unsigned least = ~0u;
    for (const char16_t unit : term) least = std::min(least, CommonnessOf(unit));
    return static_cast<int>(std::min<size_t>(term.size(), 8)) * 3 - static_cast<int>(least);
  };
  size_t best = 0;
  for (size_t i = 1; i < group.size(); ++i) {
    if (rank(group[i]) > rank(group[best])) best = i;
  }
  return best;
}

CompiledGroup CompileGroup(const std::vector<std::u16string>& group) {
  const size_t lead = RarestTerm(group);
  const auto needle = std::u16string_view(group[lead]).substr(0, kLongestNeedle);
  CompiledGroup compiled{.lead = MakeNeedle(needle), .others = {}, .signatures = {}};
  AddNeedle(compiled.signatures, needle);
  for (size_t i = 0; i < group.size(); ++i) {
    const bool isCovered = i == lead && needle.size() == group[i].size();
    if (isCovered) continue;
    compiled.others.push_back(group[i]);
    AddNeedle(compiled.signatures, group[i]);
  }
  return compiled;
}

// The blocks of which a word of `bits` is not zero: a word speaks of one block.
BlockMask BlocksWithBits(const RecordBits& bits, size_t page) {
  BlockMask blocks = 0;
  const size_t first = page * kBlocksPerPage;
  const size_t last = std::min(first + kBlocksPerPage, bits.words.size());
  for (size_t block = first; block < last; ++block) {
    if (bits.words[block] != 0) blocks |= BlockMask{1} << (block - first);
  }
  return blocks;
}

void EnterPage(NameScan& scan, size_t page) {
  scan.page = page;
  scan.groupBlocks.resize(scan.query.compiled.size());
  scan.anyBlocks = scan.query.matchesAll ? ~BlockMask{0} : 0;
  for (size_t group = 0; group < scan.groupBlocks.size(); ++group) {
    BlockMask& blocks = scan.groupBlocks[group];
    blocks = CandidateBlocks(scan.texts.signatures, page, scan.query.compiled[group].signatures);
    if (std::popcount(blocks) > kDenseBlocks) blocks = ~BlockMask{0};
    scan.anyBlocks |= blocks;
  }
  if (!scan.apartHits.blocks.empty()) scan.anyBlocks |= scan.apartHits.blocks[page];
  if (scan.query.initials.empty()) return;
  scan.initialsBlocks = CandidateBlocks(scan.texts.signatures, page, scan.query.initialsSignatures);
  if (scan.initialsBlocks == 0) return;
  scan.initialsBlocks &= BlocksWithBits(scan.texts.initials, page);
  scan.anyBlocks |= scan.initialsBlocks;
}

// The bits of the granule's blocks, lowest first.
unsigned GranuleBlocks(BlockMask blocks, uint32_t granule) {
  const uint32_t block = granule % kGranulesPerPage * kGranuleBlocks;
  return static_cast<unsigned>(blocks >> block) & ((1u << kGranuleBlocks) - 1);
}

// Number of the first text behind a chunk.
uint32_t FirstBehind(const NamePool& pool, size_t chunk) {
  return chunk + 1 < pool.chunks.size() ? pool.chunks[chunk + 1].firstText : pool.textCount;
}

// The chunk of text `text`, which is in `chunk` or behind it.
size_t ChunkOf(const NamePool& pool, uint32_t text, size_t chunk) {
  while (FirstBehind(pool, chunk) <= text) ++chunk;
  return chunk;
}

// Runs the kernel over the texts [first, last), which may lie in several chunks. `first` is on a mark,
// `last` too or the end. Bit 0 of `hits` is text `granuleFirst`.
void ScanTexts(const NameScan& scan, const Needle& needle, uint32_t first, uint32_t last,
               uint32_t granuleFirst, uint64_t* hits) {
  const NamePool& pool = scan.texts.pool;
  size_t chunk = ChunkOf(pool, first, scan.chunk);
  const char16_t* begin = pool.marks[first / kTextsPerMark];
  while (FirstBehind(pool, chunk) < last) {
    const NameChunk& part = pool.chunks[chunk];
    scan.kernel(needle, begin, part.text.get() + part.used, hits, first - granuleFirst);
    first = FirstBehind(pool, chunk++);
    begin = pool.chunks[chunk].text.get();
  }
  const NameChunk& part = pool.chunks[chunk];
  const bool toChunkEnd = FirstBehind(pool, chunk) == last;
  const char16_t* const end =
      toChunkEnd ? part.text.get() + part.used : pool.marks[last / kTextsPerMark];
  scan.kernel(needle, begin, end, hits, first - granuleFirst);
}

const FileRecord& RecordOfText(const NameScan& scan, uint32_t text) {
  const std::vector<uint32_t>* const owners = scan.texts.owners;
  return scan.volume.records[owners != nullptr ? (*owners)[text] : text];
}

// Calls `keep` for every set bit, with the number of the text; clears the bits for which it says no.
template <typename Keep>
void FilterBits(uint64_t& bits, uint32_t firstText, Keep keep) {
  for (uint64_t left = bits; left != 0; left &= left - 1) {
    const auto bit = static_cast<uint32_t>(std::countr_zero(left));
    if (!keep(firstText + bit)) bits &= ~(uint64_t{1} << bit);
  }
}

// Adds the hits of one group.
void ScanGroup(const NameScan& scan, size_t groupNumber, uint32_t granule, GranuleHits& hits) {
  const CompiledGroup& group = scan.query.compiled[groupNumber];
  const uint32_t granuleFirst = granule * kGranule;
  const uint32_t count = scan.texts.pool.textCount;
  GranuleHits found{};
  unsigned blocks = GranuleBlocks(scan.groupBlocks[groupNumber], granule);
  while (blocks != 0) {
    const auto firstBlock = static_cast<uint32_t>(std::countr_zero(blocks));
    const auto lastBlock = firstBlock + static_cast<uint32_t>(std::countr_one(blocks >> firstBlock));
    blocks &= ~0u << lastBlock;
    const uint32_t first = granuleFirst + firstBlock * kTextsPerMark;
    const uint32_t last = std::min(granuleFirst + lastBlock * kTextsPerMark, count);
    if (first < last) ScanTexts(scan, group.lead, first, last, granuleFirst, found.data());
  }
  for (uint32_t word = 0; word < found.size(); ++word) {
    if (found[word] == 0) continue;
    const uint32_t firstText = granuleFirst + word * 64;
    found[word] &= ~scan.texts.hidden.words[firstText / 64] & ~hits[word];
    if (!group.others.empty()) {
      FilterBits(found[word], firstText, [&](uint32_t text) {
        return HoldsAllTerms(FoldedNameOf(RecordOfText(scan, text)), group.others);
      });
    }
    hits[word] |= found[word];
  }
}

uint64_t ScanInitials(const NameScan& scan, uint32_t block, uint64_t alreadyHit) {
  uint64_t bits = scan.texts.initials.words[block] & ~scan.texts.hidden.words[block] & ~alreadyHit;
  FilterBits(bits, block * 64, [&](uint32_t text) {
    const FileRecord& record = RecordOfText(scan, text);
    return MatchesInitials(record.name, record.nameLength, scan.query.initials);
  });
  return bits;
}

// All texts of a block that are to be believed.
uint64_t AllOfBlock(const ScannedTexts& texts, uint32_t block) {
  const uint32_t count = std::min(texts.pool.textCount - block * 64, 64u);
  return (count == 64 ? ~uint64_t{0} : (uint64_t{1} << count) - 1) & ~texts.hidden.words[block];
}

void AddHit(PagedHits& hits, uint32_t index, uint32_t recordCount) {
  if (hits.blocks.empty()) {
    hits.blocks.resize(recordCount / kTextsPerPage + 1);
    hits.places.resize(hits.blocks.size());
  }
  const uint32_t page = index / kTextsPerPage, block = index / kTextsPerMark % kBlocksPerPage;
  if (hits.blocks[page] == 0) {
    hits.places[page] = static_cast<uint32_t>(hits.words.size());
    hits.words.emplace_back();
  }
  hits.blocks[page] |= BlockMask{1} << block;
  hits.words[hits.places[page]][block] |= uint64_t{1} << (index % 64);
}

uint64_t HitsOfBlock(const PagedHits& hits, uint32_t block) {
  if (hits.blocks.empty()) return 0;
  const uint32_t page = block / kBlocksPerPage;
  return hits.blocks[page] == 0 ? 0 : hits.words[hits.places[page]][block % kBlocksPerPage];
}

bool ScanRenamed(NameScan& scan, const RenamedNames& renamed, const std::function<bool()>& isWanted) {
  if (renamed.owners.empty()) return true;
  NameScan later{
      .volume = scan.volume,
      .query = scan.query,
      .kernel = scan.kernel,
      .texts = {renamed.pool, renamed.signatures, renamed.hidden, renamed.initials, &renamed.owners}};
  const uint32_t count = GranuleCount(renamed.pool.textCount);
  for (uint32_t granule = NextGranule(later, 0); granule < count;
       granule = NextGranule(later, granule + 1)) {
    if (!isWanted()) return false;
    const GranuleHits hits = ScanGranule(later, granule);
    for (uint32_t word = 0; word < hits.size(); ++word) {
      for (uint64_t bits = hits[word]; bits != 0; bits &= bits - 1) {
        const uint32_t text =
            granule * kGranule + word * 64 + static_cast<uint32_t>(std::countr_zero(bits));
        AddHit(scan.apartHits, renamed.owners[text], scan.volume.records.size());
      }
    }
  }
  return true;
}

// One by one: hardly a volume has such a name.
void ScanOdd(NameScan& scan) {
  const VolumeIndex& volume = scan.volume;
  for (const uint32_t index : volume.odd.records) {
    if (index >= volume.records.size()) continue;
    const FileRecord& record = volume.records[index];
    const bool isOdd = TestBit(volume.apart, index) && record.renamedText == kNoRenamedText;
    if (!isOdd || record.deleted) continue;
    const bool isHit = MatchName(FoldedNameOf(record), scan.query.groups) ||
                       (!scan.query.initials.empty() &&
                        MatchesInitials(record.name, record.nameLength, scan.query.initials));
    if (isHit) AddHit(scan.apartHits, index, volume.records.size());
  }
}

}  // namespace

CompiledQuery CompileQuery(QueryGroups prepared, bool initialsOn) {
  CompiledQuery query;
  query.matchesAll = prepared.empty();
  if (initialsOn && IsInitialsQuery(prepared)) {
    query.initials = prepared[0][0];
    AddInitialsPattern(query.initialsSignatures, query.initials);
  }
  for (const auto& group : prepared) {
    if (CanMatch(group)) query.compiled.push_back(CompileGroup(group));
  }
  query.groups = std::move(prepared);
  return query;
}

bool ScanApart(NameScan& scan, const std::function<bool()>& isWanted) {
  ScanOdd(scan);
  const auto& tables = scan.volume.renamed;
  return std::all_of(tables.begin(), tables.end(),
                     [&](const RenamedNames& renamed) { return ScanRenamed(scan, renamed, isWanted); });
}

uint32_t NextGranule(NameScan& scan, uint32_t granule) {
  const uint32_t count = GranuleCount(scan.texts.pool.textCount);
  while (granule < count) {
    const size_t page = granule / kGranulesPerPage;
    if (page != scan.page) EnterPage(scan, page);
    const uint32_t pageEnd = std::min(count, static_cast<uint32_t>(page + 1) * kGranulesPerPage);
    for (; granule < pageEnd; ++granule) {
      if (GranuleBlocks(scan.anyBlocks, granule) != 0) return granule;
    }
  }
  return count;
}

GranuleHits ScanGranule(NameScan& scan, uint32_t granule) {
  if (const size_t page = granule / kGranulesPerPage; page != scan.page) EnterPage(scan, page);
  scan.chunk = ChunkOf(scan.texts.pool, granule * kGranule, scan.chunk);
  GranuleHits hits{};
  for (size_t group = 0; group < scan.query.compiled.size(); ++group)
    ScanGroup(scan, group, granule, hits);

  const uint32_t blockCount = (scan.texts.pool.textCount + kTextsPerMark - 1) / kTextsPerMark;
  const uint32_t firstBlock = granule * kGranuleBlocks;
  const unsigned initialsBlocks =
      scan.query.initials.empty() ? 0 : GranuleBlocks(scan.initialsBlocks, granule);
  for (uint32_t word = 0; word < hits.size() && firstBlock + word < blockCount; ++word) {
    const uint32_t block = firstBlock + word;
    if (scan.query.matchesAll) hits[word] |= AllOfBlock(scan.texts, block);
    if ((initialsBlocks >> word & 1) != 0) hits[word] |= ScanInitials(scan, block, hits[word]);
    hits[word] |= HitsOfBlock(scan.apartHits, block);
  }
  return hits;
}

}  // namespace quilmark
