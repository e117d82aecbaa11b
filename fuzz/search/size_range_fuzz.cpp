// Any text of the size box: a range has a bound, its bounds are in order, blanks have no say, and bounds
// that are written in bytes read back as they were.
#include "platform/format.h"
#include "platform/utf.h"
#include "search/filter/filters.h"
#include "support/fuzz_input.h"

using namespace quilmark;

namespace {

constexpr int64_t kMostExact = int64_t{1} << 53;  // a double holds every number up to here

std::u16string Written(int64_t bound) { return bound < 0 ? u"" : FormatText(u"%d", bound); }

void CheckRange(const SizeRange& range) {
  Require(range.least >= -1 && range.most >= -1 && std::max(range.least, range.most) >= 0);
  Require(range.least < 0 || range.most < 0 || range.least <= range.most);
  if (std::max(range.least, range.most) > kMostExact) return;
  Require(ParseCustomSizeRange(Written(range.least) + u" - " + Written(range.most), 0) == range);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::u16string text = FromUtf8(InputOf(data, size).RestAsText());
  std::u16string dense = text;
  std::erase_if(dense, [](char16_t unit) { return unit == u' ' || unit == u'\t'; });
  const auto bytes = ParseCustomSizeRange(text, 0);
  for (int unit = -1; unit <= 4; ++unit) {
    const auto range = ParseCustomSizeRange(text, unit);
    Require(ParseCustomSizeRange(dense, unit) == range);
    if (!range) continue;
    CheckRange(*range);
    // Bounds beyond the greatest number of bytes are all the same, in whatever order they stand.
    if (std::max(range->least, range->most) == INT64_MAX) continue;
    Require(bytes.has_value());  // fractions that are apart in a large unit may be one number of bytes
    Require(range->least >= bytes->least && range->most >= bytes->most);
  }
  Require((CustomSizeHash(text) == CustomSizeHash(dense)) || text != dense);
  return 0;
}
