#include "search/scan_kernel.h"

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

// What the vector kernels share: 64 units a step, one mask of anchor hits and one of NULs.
struct Step {
  uint64_t anchors, ends;
};

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

// Takes the candidates of one step. Needles of one and two units are all anchors: nothing is left to
// compare.
__attribute__((target("avx2,bmi,bmi2,popcnt"))) inline void TakeCandidates(const Needle& needle,
                                                                           const char16_t* at, Step step,
                                                                           size_t endsBefore,
                                                                           uint64_t* hits,
                                                                           size_t firstBit) {
  const bool compare = needle.text.size() > 2;
  for (uint64_t left = step.anchors; left != 0; left &= left - 1) {
    const auto position = static_cast<size_t>(__builtin_ctzll(left));
    if (compare && !HoldsNeedle(at + position, needle)) continue;
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

__attribute__((target("avx2,bmi,bmi2,popcnt"))) void ScanAvx2(const Needle& needle,
                                                              const char16_t* begin, const char16_t* end,
                                                              uint64_t* hits, size_t firstBit) {
  const __m256i first = _mm256_set1_epi16(static_cast<int16_t>(needle.text[needle.firstAnchor]));
  const __m256i second = _mm256_set1_epi16(static_cast<int16_t>(needle.text[needle.secondAnchor]));
  const __m256i zero = _mm256_setzero_si256();
  size_t ends = 0;
  for (const char16_t* at = begin; at < end; at += 64) {
    const char16_t* const one = at + needle.firstAnchor;
    const char16_t* const two = at + needle.secondAnchor;
    Step step{BothEqual32(one, first, two, second) |
                  uint64_t{BothEqual32(one + 32, first, two + 32, second)} << 32,
              Equal32(at, zero) | uint64_t{Equal32(at + 32, zero)} << 32};
    const uint64_t valid = ValidBits(static_cast<size_t>(end - at));
    step.anchors &= valid;
    step.ends &= valid;
    if (step.anchors != 0) TakeCandidates(needle, at, step, ends, hits, firstBit);
    ends += static_cast<size_t>(__builtin_popcountll(step.ends));
  }
}

bool HasAvx2() {
  return __builtin_cpu_supports("avx2") && __builtin_cpu_supports("bmi") &&
         __builtin_cpu_supports("bmi2") && __builtin_cpu_supports("popcnt");
}

__attribute__((target("avx512f,avx512bw,avx2,bmi,bmi2,popcnt"))) void ScanAvx512(
    const Needle& needle, const char16_t* begin, const char16_t* end, uint64_t* hits, size_t firstBit) {
  const __m512i first = _mm512_set1_epi16(static_cast<int16_t>(needle.text[needle.firstAnchor]));
  const __m512i second = _mm512_set1_epi16(static_cast<int16_t>(needle.text[needle.secondAnchor]));
  const __m512i zero = _mm512_setzero_si512();
  size_t ends = 0;
  for (const char16_t* at = begin; at < end; at += 64) {
    const char16_t* const one = at + needle.firstAnchor;
    const char16_t* const two = at + needle.secondAnchor;
    const __mmask32 oneLow = _mm512_cmpeq_epi16_mask(_mm512_loadu_si512(one), first);
    const __mmask32 oneHigh = _mm512_cmpeq_epi16_mask(_mm512_loadu_si512(one + 32), first);
    const __mmask32 low = _mm512_mask_cmpeq_epi16_mask(oneLow, _mm512_loadu_si512(two), second);
    const __mmask32 high = _mm512_mask_cmpeq_epi16_mask(oneHigh, _mm512_loadu_si512(two + 32), second);
    const __mmask32 endsLow = _mm512_cmpeq_epi16_mask(_mm512_loadu_si512(at), zero);
    const __mmask32 endsHigh = _mm512_cmpeq_epi16_mask(_mm512_loadu_si512(at + 32), zero);
    const uint64_t valid = ValidBits(static_cast<size_t>(end - at));
    const Step step{(low | uint64_t{high} << 32) & valid, (endsLow | uint64_t{endsHigh} << 32) & valid};
    if (step.anchors != 0) TakeCandidates(needle, at, step, ends, hits, firstBit);
    ends += static_cast<size_t>(__builtin_popcountll(step.ends));
  }
}

bool HasAvx512() {
  return HasAvx2() && __builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512bw");
}

constexpr ScanKernelRow kKernels[] = {
    {"avx512", ScanAvx512, HasAvx512},
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
