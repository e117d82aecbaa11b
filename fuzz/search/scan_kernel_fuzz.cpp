// Any names and any needle: every kernel that this processor runs finds the names that a plain search
// finds.
#include "search/scan/scan_kernel.h"

#include "index/tables/name_pool.h"
#include "platform/text.h"
#include "support/fuzz_input.h"

using namespace quilmark;

namespace {

using Bits = std::vector<uint64_t>;

constexpr size_t kChunkUnits = 512;  // small: names go over several chunks

std::u16string WithoutNuls(std::u16string text) {
  std::erase(text, u'\0');
  return text;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  FuzzInput input = InputOf(data, size);
  std::u16string needle = FoldText(WithoutNuls(UnitsOf(input.TakeBytes(input.Take<uint8_t>()))));
  if (needle.empty()) return 0;
  needle.resize(std::min(needle.size(), kLongestNeedle));

  NamePool pool;
  pool.chunkCapacity = pool.usedInChunk = kChunkUnits;
  Bits expected(16);
  for (size_t i = 0; !input.rest.empty() && i < 64 * expected.size(); ++i) {
    const std::u16string name = WithoutNuls(UnitsOf(input.TakeBytes(input.Take<uint8_t>())));
    StoreName(pool, name);
    if (FoldText(name).find(needle) != needle.npos) expected[i / 64] |= uint64_t{1} << i % 64;
  }
  bool knowsBest = false;
  const Needle prepared = MakeNeedle(needle);
  for (const ScanKernelRow& kernel : ScanKernels()) {
    if (!kernel.runsHere()) continue;
    knowsBest = knowsBest || kernel.scan == BestScanKernel();
    Bits hits(expected.size());
    for (const NameChunk& chunk : pool.chunks) {
      const char16_t* const text = chunk.text.get();
      kernel.scan(prepared, text, text + chunk.used, hits.data(), chunk.firstText);
    }
    Require(hits == expected);
  }
  Require(knowsBest);
  return 0;
}
