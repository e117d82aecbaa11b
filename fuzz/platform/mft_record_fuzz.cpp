// Any bytes as a FILE record or an INDX block: fix-ups are those of a plain reading and change nothing
// else, attributes follow one another inside the record, and what an attribute hands out lies inside it.
#include <vector>

#include "platform/bytes.h"
#include "platform/file_reference.h"
#include "platform/ntfs/mft_record.h"
#include "support/fuzz_input.h"

using namespace quilmark;

namespace {

using Bytes = std::vector<std::byte>;

// Byte by byte; false where the block is not whole.
bool FixPlainly(Bytes& block) {
  const auto at = [&](size_t place) { return std::to_integer<size_t>(block[place]); };
  const auto number = [&](size_t place) { return at(place) | at(place + 1) << 8; };
  if (block.size() < 512 || block.size() % 512 != 0) return false;
  const size_t table = number(4), sectors = block.size() / 512;
  if (number(6) != sectors + 1 || table + 2 * (sectors + 1) > block.size()) return false;
  const size_t mark = number(table);
  for (size_t sector = 1; sector <= sectors; ++sector) {
    const size_t end = sector * 512;
    if (number(end - 2) != mark) return false;
    block[end - 2] = block[table + 2 * sector];
    block[end - 1] = block[table + 2 * sector + 1];
  }
  return true;
}

void CheckFileName(std::span<const std::byte> value) {
  const auto name = ParseFileName(value);
  if (!name) return;
  Require(name->space <= NameSpace::kWin32AndDos && name->name.size() % 2 == 0);
  Require(LiesWithin(name->name, value));
  Require(MakeReference(RecordNumberOf(name->parent), SequenceOf(name->parent)) == name->parent);
}

void CheckAttribute(const NtfsAttribute& attribute, std::span<const std::byte> bytes) {
  Require(LiesWithin(attribute.name, bytes) && attribute.name.size() % 2 == 0);
  Require(LiesWithin(attribute.value, bytes) && LiesWithin(attribute.runs, bytes));
  if (attribute.isResident) {
    Require(attribute.runs.empty() && attribute.lowestVcn == StreamCluster(0));
    Require(attribute.dataBytes == attribute.value.size());
    CheckFileName(attribute.value);
  } else {
    Require(attribute.value.empty() && bytes.size() >= 64);
  }
}

void CheckAttributes(std::span<const std::byte> record, size_t first) {
  AttributeCursor cursor{.record = record, .offset = first};
  size_t before = first;
  while (const auto attribute = NextAttribute(cursor)) {
    Require(!cursor.malformed && attribute->type != 0xFFFF'FFFF);
    Require(cursor.offset >= before + 24 && cursor.offset <= record.size());
    CheckAttribute(*attribute, record.subspan(before, cursor.offset - before));
    before = cursor.offset;
  }
  Require(cursor.offset == before);
  // Asked again at the end, or at damage, it stays there.
  Require(!NextAttribute(cursor));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const auto bytes = std::as_bytes(std::span(data, size));
  CheckFileName(bytes);
  Bytes record(bytes.begin(), bytes.end()), plain = record;
  const bool isWhole = ApplyFixups(record);
  Require(isWhole == FixPlainly(plain) && (!isWhole || record == plain));

  const auto header = ParseRecordHeader(bytes);
  if (!header) return 0;
  const auto fixed = ParseRecordHeader(record);
  // The table of the fix-ups may be said to lie over the header, which is damage.
  if (fixed) CheckAttributes(record, fixed->firstAttribute);
  CheckAttributes(bytes, header->firstAttribute);
  return 0;
}
