// Any bytes as a block of USN records: the cursor ends, moves forward, hands out names from inside the
// block, and a record that is written anew reads back as it was.
#include <vector>

#include "platform/usn_record.h"
#include "platform/utf.h"
#include "support/fuzz_input.h"

using namespace quilmark;

namespace {

constexpr size_t kMostNameUnits = 32'000;  // of a record that is written

// The position in front of the record has no say.
void CheckRewritten(const UsnRecord& record, std::u16string_view name) {
  UsnRecord whole = record;
  whole.name = record.name.first(name.size() * sizeof(char16_t));
  std::vector<std::byte> block(kUsnPositionBytes + UsnRecordLength(name.size()), std::byte{0xAA});
  PutUsnRecord(std::span(block).subspan(kUsnPositionBytes), whole, 1);
  UsnCursor cursor{.block = block};
  const auto again = NextUsnRecord(cursor);
  Require(again && cursor.offset == block.size() && !NextUsnRecord(cursor) && !cursor.malformed);
  Require(again->frn == record.frn && again->parentFrn == record.parentFrn && again->usn == record.usn);
  Require(again->reason == record.reason && again->attributes == record.attributes);
  std::u16string units;
  Require(NameUnits(*again, units) == name);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const auto block = std::as_bytes(std::span(data, size));
  UsnCursor cursor{.block = block};
  size_t before = cursor.offset;
  std::u16string units;
  while (const auto record = NextUsnRecord(cursor)) {
    Require(cursor.offset >= before + 64 && cursor.offset <= size);
    Require(LiesWithin(record->name, block.subspan(before, cursor.offset - before)));
    const std::u16string name(NameUnits(*record, units));
    Require(name.size() == record->name.size() / 2 && name.find(u'\\') == name.npos);
    if (name.size() <= kMostNameUnits) CheckRewritten(*record, name);
    before = cursor.offset;
  }
  Require(cursor.offset == before);
  return 0;
}
