#include "search/scan/scan_kernel.h"

#include <immintrin.h>

#include <algorithm>
#include <cstring>

namespace quilmark {

namespace {

// Shares of the characters in names of files, in steps; what is not listed is rarer than any of these.
constexpr std::array<std::string_view, 8> kCommonUnits = {"ei",    "atnro",  "slc.",     "dmpu_",
                                                          "hg-02", "f1b y3", "v5k4x678", "9wjz("};

constexpr std::array<uint8_t, 128> MakeCommonness() {
  std::array<uint8_t, 128> commonness{};
  for (size_t step = 0; step < kCommonUnits.size(); ++step) {
    for (const char unit : kCommonUnits[step]) {
      commonness[static_cast<size_t>(unit)] = static_cast<uint8_t>(kCommonUnits.size() + 1 - step);
    }
  }
  commonness['q'] = 1;
  return commonness;
}
constexpr auto kCommonness = MakeCommonness();

// --- plain
// -----------------------------------------------------------------------------------------------------

void ScanPlain(const Needle& needle, const char16_t* begin, const char16_t* end, uint64_t* hits,
               size_t firstBit) {
  for (const char16_t* text = begin; text < end; ++firstBit) {
    const std::u16string_view name(text);
    const std::u16string_view folded(text + name.size() + 1, name.size());
    if (folded.find(needle.text) != folded.npos) hits[firstBit / 64] |= uint64_t{1} << (firstBit % 64);
    text += 2 * name.size() + 2;
  }
}

bool RunsAnywhere() { return true; }

// --- vectors
// ---------------------------------------------------------------------------------------------------

// One step over 64 units: where the anchors fit, and where the NULs are.
struct Step {
  uint64_t anchors, ends;
};

// Ahead of the step, in units: 4 KiB. The processor's own prefetcher stops at every page; this gains 30
// to 50 % on a pool that is far larger than the caches. Half or double the distance is slower.
constexpr size_t kPrefetchAhead = 2'048;

inline void PrefetchStep(const char16_t* at) {
  const char* const ahead = reinterpret_cast<const char*>(at) + kPrefetchAhead * sizeof(char16_t);
  _mm_prefetch(ahead, _MM_HINT_T0);
  _mm_prefetch(ahead + 64, _MM_HINT_T0);
}

// Bits of the units that a step of `left` units has.
inline uint64_t ValidBits(size_t left) { return left >= 64 ? ~uint64_t{0} : (uint64_t{1} << left) - 1; }

__attribute__((target("avx2"))) inline bool HoldsNeedle(const char16_t* at, const Needle& needle) {
  const __m256i text = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(at));
  const __m256i head = _mm256_load_si256(reinterpret_cast<const __m256i*>(needle.head.data()));
  const auto equal = static_cast<uint32_t>(_mm256_movemask_epi8(_mm256_cmpeq_epi16(text, head)));
  if ((equal & needle.headMask) != needle.headMask) return false;
  const size_t headSize = needle.head.size();
  return needle.text.size() <= headSize ||
         std::memcmp(at + headSize, needle.text.data() + headSize,
                     (needle.text.size() - headSize) * sizeof(char16_t)) == 0;
}

// Compares the whole needle at the candidates of one step.
__attribute__((target("avx2,bmi,bmi2,popcnt"))) inline void TakeCandidates(const Needle& needle,
                                                                           const char16_t* at, Step step,
                                                                           size_t endsBefore,
                                                                           uint64_t* hits,
                                                                           size_t firstBit) {
  for (uint64_t left = step.anchors; left != 0; left &= left - 1) {
    const auto position = static_cast<size_t>(__builtin_ctzll(left));
    if (!HoldsNeedle(at + position, needle)) continue;
    const uint64_t before = step.ends & ((uint64_t{1} << position) - 1);
    const size_t bit = firstBit + (endsBefore + static_cast<size_t>(__builtin_popcountll(before))) / 2;
    hits[bit / 64] |= uint64_t{1} << (bit % 64);
  }
}

__attribute__((target("avx2"))) inline __m256i Equal16(const char16_t* at, __m256i value) {
  return _mm256_cmpeq_epi16(_mm256_loadu_si256(reinterpret_cast<const __m256i*>(at)), value);
}

// One bit a unit, of two vectors of 16 comparisons.
__attribute__((target("avx2"))) inline uint32_t BitsOf(__m256i low, __m256i high) {
  return static_cast<uint32_t>(
      _mm256_movemask_epi8(_mm256_permute4x64_epi64(_mm256_packs_epi16(low, high), 0xD8)));
}

// One bit a unit for 32 units compared to `value`.
__attribute__((target("avx2"))) inline uint32_t Equal32(const char16_t* at, __m256i value) {
  return BitsOf(Equal16(at, value), Equal16(at + 16, value));
}

// The same for two anchors at once.
__attribute__((target("avx2"))) inline uint32_t BothEqual32(const char16_t* one, __m256i oneValue,
                                                            const char16_t* two, __m256i twoValue) {
  const __m256i low = _mm256_and_si256(Equal16(one, oneValue), Equal16(two, twoValue));
  const __m256i high = _mm256_and_si256(Equal16(one + 16, oneValue), Equal16(two + 16, twoValue));
  return BitsOf(low, high);
}

struct Anchors {
  __m256i first, second;
  size_t firstAt, secondAt;
};

__attribute__((target("avx2"))) inline Anchors MakeAnchors(const Needle& needle) {
  return {_mm256_set1_epi16(static_cast<int16_t>(needle.text[needle.firstAnchor])),
          _mm256_set1_epi16(static_cast<int16_t>(needle.text[needle.secondAnchor])), needle.firstAnchor,
          needle.secondAnchor};
}

__attribute__((target("avx2,bmi,bmi2,popcnt"))) inline Step TakeStep(const Anchors& anchors,
                                                                     const char16_t* at, size_t left) {
  PrefetchStep(at);
  const char16_t* const one = at + anchors.firstAt;
  const char16_t* const two = at + anchors.secondAt;
  const __m256i zero = _mm256_setzero_si256();
  const uint64_t fits = BothEqual32(one, anchors.first, two, anchors.second) |
                        uint64_t{BothEqual32(one + 32, anchors.first, two + 32, anchors.second)} << 32;
  const uint64_t ends = Equal32(at, zero) | uint64_t{Equal32(at + 32, zero)} << 32;
  const uint64_t valid = ValidBits(left);
  return {fits & valid, ends & valid};
}

__attribute__((target("avx2,bmi,bmi2,popcnt"))) void ScanLong(const Needle& needle,
                                                              const char16_t* begin, const char16_t* end,
                                                              uint64_t* hits, size_t firstBit) {
  const Anchors anchors = MakeAnchors(needle);
  size_t ends = 0;
  for (const char16_t* at = begin; at < end; at += 64) {
    const Step step = TakeStep(anchors, at, static_cast<size_t>(end - at));
    if (step.anchors != 0) TakeCandidates(needle, at, step, ends, hits, firstBit);
    ends += static_cast<size_t>(__builtin_popcountll(step.ends));
  }
}

// Hits of a stretch of steps, a bit for each part (a name or its folded copy) that begins or goes on in
// it.
struct PartHits {
  static constexpr size_t kSteps = 192;  // most granules of a scan in one stretch
  std::array<uint64_t, kSteps + 2> words;

  void Add(uint64_t bits, size_t firstPart) {
    words[firstPart / 64] |= bits << (firstPart % 64);
    if (firstPart % 64 != 0) words[firstPart / 64 + 1] |= bits >> (64 - firstPart % 64);
  }
};

// Two parts make a text.
__attribute__((target("avx2,bmi,bmi2,popcnt"))) inline void AddTextHits(const PartHits& parts,
                                                                        size_t partCount, uint64_t* hits,
                                                                        size_t firstBit) {
  for (size_t word = 0; word * 64 < partCount; ++word, firstBit += 32) {
    const uint64_t either = parts.words[word] | parts.words[word] >> 1;
    const uint64_t bits = _pext_u64(either, 0x5555'5555'5555'5555);
    if (bits == 0) continue;  // the word may lie behind the last text
    hits[firstBit / 64] |= bits << (firstBit % 64);
    const uint64_t rest = firstBit % 64 > 32 ? bits >> (64 - firstBit % 64) : 0;
    if (rest != 0) hits[firstBit / 64 + 1] |= rest;
  }
}

// Needles of one and two units are all anchors, so that no candidate needs a second look, and hits can
// be many: hardly a branch depends on them. From the start of each part a carry runs up to the part's
// first candidate or its end; whether it stopped at a candidate is the answer for that part.
__attribute__((target("avx2,bmi,bmi2,popcnt"))) void ScanShort(const Needle& needle,
                                                               const char16_t* begin,
                                                               const char16_t* end, uint64_t* hits,
                                                               size_t firstBit) {
  const Anchors anchors = MakeAnchors(needle);
  size_t part = 0;  // of the stretch
  for (const char16_t* at = begin; at < end;) {
    PartHits parts;  // cleared when the first hit comes
    bool found = false;
    const bool inSecondPart = part % 2 != 0;
    part = inSecondPart ? 1 : 0;
    const char16_t* const stretchEnd = std::min(end, at + 64 * (PartHits::kSteps - 1));
    for (; at < stretchEnd; at += 64) {
      const Step step = TakeStep(anchors, at, static_cast<size_t>(end - at));
      if (step.anchors != 0) {  // a rare unit: most steps have none
        const uint64_t open = ~(step.anchors | step.ends);
        const uint64_t stops = (open + (step.ends << 1 | 1)) & ~open;
        if (!found) parts.words = {};
        found = true;
        parts.Add(_pext_u64(step.anchors, stops), part);
      }
      part += static_cast<size_t>(__builtin_popcountll(step.ends));
    }
    if (found) AddTextHits(parts, part + 1, hits, firstBit);
    firstBit += part / 2;
  }
}

void ScanAvx2(const Needle& needle, const char16_t* begin, const char16_t* end, uint64_t* hits,
              size_t firstBit) {
  (needle.text.size() <= 2 ? ScanShort : ScanLong)(needle, begin, end, hits, firstBit);
}

bool HasAvx2() {
  return __builtin_cpu_supports("avx2") && __builtin_cpu_supports("bmi") &&
         __builtin_cpu_supports("bmi2") && __builtin_cpu_supports("popcnt");
}

constexpr ScanKernelRow kKernels[] = {
    {"avx2", ScanAvx2, HasAvx2},
    {"plain", ScanPlain, RunsAnywhere},
};

}  // namespace

unsigned CommonnessOf(char16_t unit) { return unit < kCommonness.size() ? kCommonness[unit] : 0; }

Needle MakeNeedle(std::u16string_view text) {
  Needle needle;
  needle.text = text;
  const auto rarer = [&](size_t a, size_t b) { return CommonnessOf(text[a]) < CommonnessOf(text[b]); };
  for (size_t i = 1; i < text.size(); ++i) {
    if (rarer(i, needle.firstAnchor)) needle.firstAnchor = i;
  }
  needle.secondAnchor = needle.firstAnchor == text.size() - 1 ? 0 : text.size() - 1;
  for (size_t i = 0; i < text.size(); ++i) {
    if (i != needle.firstAnchor && rarer(i, needle.secondAnchor)) needle.secondAnchor = i;
  }
  const size_t headSize = std::min(text.size(), needle.head.size());
  std::copy_n(text.begin(), headSize, needle.head.begin());
  needle.headMask = static_cast<uint32_t>((uint64_t{1} << (2 * headSize)) - 1);
  return needle;
}

std::span<const ScanKernelRow> ScanKernels() { return kKernels; }

ScanKernel BestScanKernel() {
  static const ScanKernel best =
      std::find_if(std::begin(kKernels), std::end(kKernels), [](const auto& row) {
        return row.runsHere();
      })->scan;
  return best;
}

}  // namespace quilmark
