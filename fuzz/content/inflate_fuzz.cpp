// Any bytes as a deflate stream, in one piece and in two: it ends, by what its bits can pay for.
#include <miniz.h>

#include <vector>

#include "support/fuzz_input.h"

using namespace quilmark;

namespace {

constexpr size_t kMostExpansion = 258 * 8 / 2;

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size > 4096) return 0;
  std::vector<uint8_t> whole(kMostExpansion * size + 16), pieces(whole.size());
  tinfl_decompressor inflator;
  tinfl_init(&inflator);
  size_t taken = size, made = whole.size();
  const tinfl_status status = tinfl_decompress(&inflator, data, &taken, whole.data(), whole.data(),
                                               &made, TINFL_FLAG_USING_NON_WRAPPING_OUTPUT_BUF);
  Require(status != TINFL_STATUS_HAS_MORE_OUTPUT && taken <= size && made <= kMostExpansion * size);

  tinfl_init(&inflator);
  size_t first = size / 2, firstMade = pieces.size();
  tinfl_status next =
      tinfl_decompress(&inflator, data, &first, pieces.data(), pieces.data(), &firstMade,
                       TINFL_FLAG_USING_NON_WRAPPING_OUTPUT_BUF | TINFL_FLAG_HAS_MORE_INPUT);
  if (next != TINFL_STATUS_NEEDS_MORE_INPUT) return 0;
  size_t second = size - first, secondMade = pieces.size() - firstMade;
  next = tinfl_decompress(&inflator, data + first, &second, pieces.data(), pieces.data() + firstMade,
                          &secondMade, TINFL_FLAG_USING_NON_WRAPPING_OUTPUT_BUF);
  if (status != TINFL_STATUS_DONE) return 0;
  Require(next == status && firstMade + secondMade == made);
  Require(std::equal(whole.begin(), whole.begin() + static_cast<ptrdiff_t>(made), pieces.begin()));
  return 0;
}
