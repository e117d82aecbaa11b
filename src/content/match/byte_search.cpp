#include "content/match/byte_search.h"

#include <immintrin.h>

#include <algorithm>
#include <cstring>
#include <optional>

namespace quilmark {

namespace {

using std::literals::operator""sv;

// Bytes of texts, sources and programs from the commonest on, in steps. What is not listed, most of it
// above 0x7F, is in files that are packed or drawn as common as anything, and in others rare.
constexpr std::array kCommonBytes = {"\0 e"sv,
                                     "taoinrs\n"sv,
                                     "lhdcu"sv,
                                     "mpfg.,_"sv,
                                     "()0\"=;-1/:"sv,
                                     "ybwv2\t\r"sv,
                                     "kx3456789*<>{}'"sv,
                                     "TESAICRNODL\xFF"sv,
                                     "PMFB[]j+&\\#\1q"sv,
                                     "UHGVWz@$|%\xC3\xD0"sv,
                                     "XYKJQ?!Z\x80\xE2"sv};

constexpr std::array<uint8_t, 256> MakeCommonness() {
  std::array<uint8_t, 256> commonness{};
  for (size_t step = 0; step < kCommonBytes.size(); ++step) {
    for (const char byte : kCommonBytes[step]) {
      commonness[static_cast<uint8_t>(byte)] = static_cast<uint8_t>(kCommonBytes.size() - step);
    }
  }
  // Rarest of the letters.
  for (const char byte : "ZQJ"sv) commonness[static_cast<uint8_t>(byte)] = 0;
  return commonness;
}
constexpr auto kCommonness = MakeCommonness();

uint8_t ByteAt(std::string_view bytes, size_t at) { return static_cast<uint8_t>(bytes[at]); }

// The rarest byte that stands in every form; empty where there is none.
std::optional<uint8_t> RarestOfAll(std::span<const std::string> forms) {
  std::optional<uint8_t> rarest;
  for (const char byte : forms[0]) {
    const bool isInAll = std::all_of(forms.begin(), forms.end(), [byte](const std::string& form) {
      return form.find(byte) != form.npos;
    });
    if (!isInAll) continue;
    const auto candidate = static_cast<uint8_t>(byte);
    if (!rarest || kCommonness[candidate] < kCommonness[*rarest]) rarest = candidate;
  }
  return rarest;
}

ByteForm MakeForm(std::string bytes, uint8_t rare) {
  ByteForm form{.bytes = std::move(bytes)};
  form.rareAt = form.bytes.find(static_cast<char>(rare));
  form.secondAt = form.rareAt;
  for (size_t i = 0; i < form.bytes.size(); ++i) {
    // Another byte than the first anchor's says more than the same one again.
    const uint8_t byte = ByteAt(form.bytes, i), held = ByteAt(form.bytes, form.secondAt);
    if (byte != rare && (held == rare || kCommonness[byte] < kCommonness[held])) form.secondAt = i;
  }
  return form;
}

ByteNeedle MakeNeedle(std::span<const std::string> forms, uint8_t rare) {
  ByteNeedle needle;
  needle.rare = rare;
  for (const std::string& form : forms) needle.forms[needle.count++] = MakeForm(form, rare);
  return needle;
}

// Whether the form stands in [first, last) so that its rare byte is the one at `rare`.
inline bool StandsAt(const ByteForm& form, const char* first, const char* rare, const char* last) {
  const auto before = static_cast<size_t>(rare - first), behind = static_cast<size_t>(last - rare);
  return form.rareAt <= before && form.bytes.size() - form.rareAt <= behind &&
         std::memcmp(rare - form.rareAt, form.bytes.data(), form.bytes.size()) == 0;
}

inline bool AnyStandsAt(const ByteNeedle& needle, const char* first, const char* rare,
                        const char* last) {
  for (size_t i = 0; i < needle.count; ++i) {
    if (StandsAt(needle.forms[i], first, rare, last)) return true;
  }
  return false;
}

// --- plain
// -----------------------------------------------------------------------------------------------------

// Rare bytes of [from, to) alone; the forms may reach over both ends, within [first, last).
bool HoldsNear(const ByteNeedle& needle, const char* first, const char* from, const char* to,
               const char* last) {
  while (from < to) {
    const auto* const rare =
        static_cast<const char*>(std::memchr(from, needle.rare, static_cast<size_t>(to - from)));
    if (rare == nullptr) return false;
    if (AnyStandsAt(needle, first, rare, last)) return true;
    from = rare + 1;
  }
  return false;
}

bool HoldsPlain(const ByteNeedle& needle, const char* first, const char* last) {
  return HoldsNear(needle, first, first, last, last);
}

bool RunsAnywhere() { return true; }

// --- vectors
// ---------------------------------------------------------------------------------------------------

constexpr ptrdiff_t kStep = 64;

// The second anchors, seen from the rare byte.
struct SecondAnchors {
  std::array<char, ByteNeedle::kMostForms> bytes;
  std::array<ptrdiff_t, ByteNeedle::kMostForms> offsets;
  ptrdiff_t least = 0, most = 0;  // offsets, and 0
};

SecondAnchors SecondAnchorsOf(const ByteNeedle& needle) {
  SecondAnchors anchors{};
  for (size_t i = 0; i < needle.count; ++i) {
    const ByteForm& form = needle.forms[i];
    anchors.bytes[i] = form.bytes[form.secondAt];
    anchors.offsets[i] = static_cast<ptrdiff_t>(form.secondAt) - static_cast<ptrdiff_t>(form.rareAt);
    anchors.least = std::min(anchors.least, anchors.offsets[i]);
    anchors.most = std::max(anchors.most, anchors.offsets[i]);
  }
  return anchors;
}

__attribute__((target("avx2"))) inline __m256i Equal32(const char* at, __m256i value) {
  return _mm256_cmpeq_epi8(_mm256_loadu_si256(reinterpret_cast<const __m256i*>(at)), value);
}

__attribute__((target("avx2"))) inline uint64_t BitsOf(__m256i low, __m256i high) {
  return static_cast<uint32_t>(_mm256_movemask_epi8(low)) |
         uint64_t{static_cast<uint32_t>(_mm256_movemask_epi8(high))} << 32;
}

// Rare bytes of [from, to), 64 at a time; the rest of less than a step is left. Returns where it ended,
// or null for a hit. Loads reach as far around as the second anchors.
template <size_t kForms>
__attribute__((target("avx2,bmi"))) const char* ScanSteps(const ByteNeedle& needle,
                                                          const SecondAnchors& anchors,
                                                          const char* first, const char* from,
                                                          const char* to, const char* last) {
  const __m256i rare = _mm256_set1_epi8(static_cast<char>(needle.rare));
  __m256i seconds[kForms];
  for (size_t i = 0; i < kForms; ++i) seconds[i] = _mm256_set1_epi8(anchors.bytes[i]);
  for (; to - from >= kStep; from += kStep) {
    __m256i low = Equal32(from + anchors.offsets[0], seconds[0]);
    __m256i high = Equal32(from + anchors.offsets[0] + 32, seconds[0]);
    for (size_t i = 1; i < kForms; ++i) {
      low = _mm256_or_si256(low, Equal32(from + anchors.offsets[i], seconds[i]));
      high = _mm256_or_si256(high, Equal32(from + anchors.offsets[i] + 32, seconds[i]));
    }
    low = _mm256_and_si256(low, Equal32(from, rare));
    high = _mm256_and_si256(high, Equal32(from + 32, rare));
    const __m256i either = _mm256_or_si256(low, high);
    if (_mm256_testz_si256(either, either)) continue;
    for (uint64_t left = BitsOf(low, high); left != 0; left &= left - 1) {
      if (AnyStandsAt(needle, first, from + __builtin_ctzll(left), last)) return nullptr;
    }
  }
  return from;
}

bool HoldsAvx2(const ByteNeedle& needle, const char* first, const char* last) {
  const SecondAnchors anchors = SecondAnchorsOf(needle);
  // Every load within the block; what is left at both ends has no room for a step.
  if (last - first <= anchors.most - anchors.least + kStep) return HoldsPlain(needle, first, last);
  const char* const from = first - anchors.least;
  const char* const to = last - anchors.most;
  constexpr decltype(&ScanSteps<1>) kScans[] = {ScanSteps<1>, ScanSteps<2>, ScanSteps<3>};
  const char* const rest = kScans[needle.count - 1](needle, anchors, first, from, to, last);
  return rest == nullptr || HoldsNear(needle, first, first, from, last) ||
         HoldsNear(needle, first, rest, last, last);
}

bool HasAvx2() { return __builtin_cpu_supports("avx2") && __builtin_cpu_supports("bmi"); }

constexpr ByteKernelRow kKernels[] = {
    {"avx2", HoldsAvx2, HasAvx2},
    {"plain", HoldsPlain, RunsAnywhere},
};

}  // namespace

unsigned CommonnessOfByte(uint8_t byte) { return kCommonness[byte]; }

std::vector<ByteNeedle> MakeByteNeedles(std::vector<std::string> forms) {
  std::erase_if(forms, [](const std::string& form) { return form.empty(); });
  std::sort(forms.begin(), forms.end());
  forms.erase(std::unique(forms.begin(), forms.end()), forms.end());
  if (forms.empty()) return {};
  if (forms.size() <= ByteNeedle::kMostForms) {
    if (const auto rare = RarestOfAll(forms)) return {MakeNeedle(forms, *rare)};
  }
  std::vector<ByteNeedle> needles;
  for (const std::string& form : forms) {
    const std::span<const std::string> one(&form, 1);
    needles.push_back(MakeNeedle(one, *RarestOfAll(one)));
  }
  return needles;
}

std::span<const ByteKernelRow> ByteKernels() { return kKernels; }

ByteKernel BestByteKernel() {
  static const ByteKernel best =
      std::find_if(std::begin(kKernels), std::end(kKernels), [](const auto& row) {
        return row.runsHere();
      })->holds;
  return best;
}

}  // namespace quilmark
