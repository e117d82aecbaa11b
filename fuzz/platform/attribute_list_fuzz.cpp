// Any bytes as the value of an $ATTRIBUTE_LIST: the cursor moves on by whole entries, and names lie
// inside their entry.
#include "platform/ntfs/mft_reader.h"
#include "support/fuzz_input.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace quilmark;
  const auto list = std::as_bytes(std::span(data, size));
  AttributeListCursor cursor{.list = list};
  size_t before = 0;
  while (const auto listed = NextListed(cursor)) {
    Require(cursor.offset >= before + 26 && cursor.offset <= size);
    const auto entry = list.subspan(before, cursor.offset - before);
    Require(LiesWithin(listed->name, entry) && listed->name.size() % 2 == 0);
    before = cursor.offset;
  }
  Require(cursor.offset == before && !NextListed(cursor));
  return 0;
}
