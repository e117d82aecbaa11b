#include "support/corpus.h"

#include <immintrin.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>

#include "platform/usn_record.h"
#include "platform/utf.h"

namespace quilmark {

size_t NameCount() {
  const char* const count = std::getenv("QUILMARK_BENCH_NAMES");
  return count != nullptr ? std::strtoull(count, nullptr, 10) : 1'000'000;
}

std::vector<CorpusEntry> LoadCorpus(size_t count) {
  const char* const folder = std::getenv("QUILMARK_BENCH_DATA");
  const std::string path =
      std::string(folder != nullptr ? folder : ".") + "/names-" + std::to_string(count) + "/records.tsv";
  std::ifstream file(path);
  if (!file) {
    std::fprintf(stderr, "%s: not there (bench/run.sh makes it)\n", path.c_str());
    std::exit(2);
  }
  std::vector<CorpusEntry> corpus;
  corpus.reserve(count);
  std::string line;
  while (std::getline(file, line)) {
    std::istringstream fields(line);
    CorpusEntry entry;
    int isDirectory = 0;
    fields >> entry.id >> entry.parent >> isDirectory;
    fields.ignore(1);
    std::string name;
    std::getline(fields, name);
    entry.isDirectory = isDirectory != 0;
    entry.name = FromUtf8(name);
    corpus.push_back(std::move(entry));
  }
  return corpus;
}

std::unique_ptr<VolumeIndex> MakeVolume(const std::vector<CorpusEntry>& corpus) {
  auto volume = std::make_unique<VolumeIndex>();
  volume->drive = u"C:";
  volume->fileSystem = u"bench";
  for (const CorpusEntry& entry : corpus) {
    const NewRecord made{.frn = entry.id, .parentFrn = entry.parent, .isDirectory = entry.isDirectory};
    const uint32_t index = AppendRecord(*volume, made, entry.name);
    SetIndexOf(volume->frnToIndex, volume->records, made.frn, index);
  }
  return volume;
}

// Four independent sums of pairs of loads: nothing but the loads themselves is on the critical path.
__attribute__((target("avx2"))) static uint64_t SumChunk(const NameChunk& chunk) {
  const auto* at = reinterpret_cast<const __m256i*>(chunk.text.get());
  const auto* const end = at + chunk.used * sizeof(char16_t) / sizeof(__m256i) / 8 * 8;
  __m256i a = _mm256_setzero_si256(), b = a, c = a, d = a;
  for (; at < end; at += 8) {
    a = _mm256_xor_si256(_mm256_add_epi64(a, _mm256_loadu_si256(at)), _mm256_loadu_si256(at + 4));
    b = _mm256_xor_si256(_mm256_add_epi64(b, _mm256_loadu_si256(at + 1)), _mm256_loadu_si256(at + 5));
    c = _mm256_xor_si256(_mm256_add_epi64(c, _mm256_loadu_si256(at + 2)), _mm256_loadu_si256(at + 6));
    d = _mm256_xor_si256(_mm256_add_epi64(d, _mm256_loadu_si256(at + 3)), _mm256_loadu_si256(at + 7));
  }
  const __m256i sum = _mm256_add_epi64(_mm256_add_epi64(a, b), _mm256_add_epi64(c, d));
  return static_cast<uint64_t>(_mm256_extract_epi64(sum, 0)) +
         static_cast<uint64_t>(_mm256_extract_epi64(sum, 2));
}

bool AddUsnRecord(std::vector<std::byte>& block, const CorpusEntry& entry, uint32_t reason) {
  constexpr size_t kBlockBytes = 65'536;
  const size_t offset = block.size(), length = UsnRecordLength(entry.name.size());
  if (offset + length > kBlockBytes) return false;
  block.resize(offset + length);
  PutUsnRecord(std::span(block).subspan(offset),
               {.frn = FileReference(entry.id),
                .parentFrn = FileReference(entry.parent),
                .reason = reason,
                .attributes = entry.isDirectory ? kFileAttributeDirectory : 0,
                .name = std::as_bytes(std::span(entry.name))},
               0);
  return true;
}

uint64_t ReadPool(const NamePool& pool) {
  uint64_t sum = 0;
  for (const NameChunk& chunk : pool.chunks) sum += SumChunk(chunk);
  return sum;
}

}  // namespace quilmark
