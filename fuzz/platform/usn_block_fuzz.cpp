// Any bytes as a block of USN records: the cursor ends, moves forward, and hands out names from inside
// the block.
#include <cstdint>
#include <cstdlib>

#include "platform/usn_record.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace quilmark;
  const auto block = std::as_bytes(std::span(data, size));
  UsnCursor cursor{.block = block};
  size_t before = cursor.offset;
  while (const auto record = NextUsnRecord(cursor)) {
    if (cursor.offset < before + 64 || cursor.offset > size) std::abort();
    const std::byte* name = record->name.data();
    if (name < block.data() + before) std::abort();
    if (name + record->name.size() > block.data() + cursor.offset) std::abort();
    before = cursor.offset;
  }
  return 0;
}
