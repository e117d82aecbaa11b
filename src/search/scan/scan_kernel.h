// The substring test of the name scan: one needle over a run of texts, as fast as memory delivers them.
//
// A run is what a NamePool holds in one piece: text after text, each as name, NUL, folded name, NUL. The
// needle is folded, so a hit in the spelling on disk is a hit in the folded copy too, and the two need
// not be told apart. The number of a text is half the count of NULs before it.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace quilmark {

// A needle with what the kernels need of it. Two anchors, its rarest units, are compared first.
struct Needle {
  std::u16string text;  // 1 unit at least, none of them NUL
  size_t firstAnchor = 0, secondAnchor = 0;
  alignas(32) std::array<char16_t, 16> head{};  // the first units, zeros behind them
  uint32_t headMask = 0;                        // two bits for each unit of `head` that counts
};

inline constexpr size_t kLongestNeedle = 256;

// With the anchors that are rarest in names of files. REQUIRES text of 1 to kLongestNeedle units without
// NUL.
Needle MakeNeedle(std::u16string_view text);

// How rare a unit is in names of files: 0 is rarest.
unsigned CommonnessOf(char16_t unit);

// Sets bit firstBit + n of `hits` (64 a word) for every text n of [begin, end) that holds the needle;
// other bits stay as they are. Reads up to kChunkSlack units past `end`.
using ScanKernel = void (*)(const Needle& needle, const char16_t* begin, const char16_t* end,
                            uint64_t* hits, size_t firstBit);

struct ScanKernelRow {
  const char* name;
  ScanKernel scan;
  bool (*runsHere)();  // the processor has the instructions
};

// Fastest first; the last one runs everywhere.
std::span<const ScanKernelRow> ScanKernels();

// The first of ScanKernels that runs on this processor.
ScanKernel BestScanKernel();

}  // namespace quilmark
