#include "platform/ntfs/mft_record.h"

#include <gtest/gtest.h>

#include "platform/bytes.h"
#include "support/ntfs_builder.h"

namespace quilmark {
namespace {

// A block of `size` bytes whose header asks for `count` fix-ups at byte 48, each sector as written.
Bytes Block(size_t size, uint16_t count) {
  Bytes block(size);
  if (size >= 52) {
    StoreLe(std::span(block), 4, uint16_t{48});
    StoreLe(std::span(block), 6, count);
    StoreLe(std::span(block), 48, uint16_t{0x1234});
  }
  for (size_t end = 512; end <= size; end += 512) StoreLe(std::span(block), end - 2, uint16_t{0x1234});
  return block;
}

TEST(ApplyFixups, PutsBackTheEndOfEachSector) {
  Bytes block = Block(1'024, 3);
  StoreLe(std::span(block), 50, uint16_t{0xAAAA});
  StoreLe(std::span(block), 52, uint16_t{0xBBBB});
  EXPECT_TRUE(ApplyFixups(block));
  EXPECT_EQ(LoadLe<uint16_t>(block, 510), 0xAAAA);
  EXPECT_EQ(LoadLe<uint16_t>(block, 1'022), 0xBBBB);
}

TEST(ApplyFixups, TakesWholeSectorsAlone) {
  for (const size_t size : {0u, 3u, 7u, 100u, 511u}) {
    Bytes block = Block(size, 1);
    EXPECT_FALSE(ApplyFixups(block)) << size;
  }
  for (const size_t size : {513u, 600u, 1'023u}) {
    Bytes block = Block(size, 2);
    EXPECT_FALSE(ApplyFixups(block)) << size;
  }
}

TEST(ApplyFixups, TakesAsManyAsThereAreSectorsFromWithinTheBlock) {
  for (const unsigned count : {0u, 1u, 2u, 4u, 0xFFFFu}) {
    Bytes block = Block(1'024, static_cast<uint16_t>(count));
    EXPECT_FALSE(ApplyFixups(block)) << count;
  }
  for (const unsigned offset : {1'019u, 1'022u, 1'024u, 0xFFFFu}) {
    Bytes block = Block(1'024, 3);
    StoreLe(std::span(block), 4, static_cast<uint16_t>(offset));
    EXPECT_FALSE(ApplyFixups(block)) << offset;
  }
}

TEST(ApplyFixups, RefusesASectorOfAnotherWrite) {
  Bytes block = Block(1'024, 3);
  StoreLe(std::span(block), 1'022, uint16_t{0x1235});
  EXPECT_FALSE(ApplyFixups(block));
}

TEST(MftRecord, BytesThatEndInTheHeaderAreNoRecord) {
  const Bytes whole = RecordBuilder().Finish({});
  for (size_t size = 0; size < 42; ++size) {
    const Bytes part(whole.begin(), whole.begin() + static_cast<ptrdiff_t>(size));
    EXPECT_FALSE(ParseRecordHeader(part)) << size;
  }
  EXPECT_TRUE(ParseRecordHeader(std::span(whole).first(42)));
}

// The used bytes of a record in a block of their own, so that a read behind them is seen.
Bytes Used(const RecordBuilder& builder) {
  Bytes record = builder.Finish({});
  EXPECT_TRUE(ApplyFixups(record));
  return Bytes(record.begin(), record.begin() + LoadLe<uint32_t>(record, 24));
}

size_t FirstOf(std::span<const std::byte> record) { return ParseRecordHeader(record)->firstAttribute; }

TEST(MftRecord, AnAttributeThatDoesNotFitEndsTheRecord) {
  struct Damage {
    const char* what;
    size_t offset;  // in the attribute
    std::vector<unsigned char> bytes;
  };
  const Damage all[] = {{"no length", 4, {0, 0, 0, 0}},
                        {"shorter than any", 4, {23, 0, 0, 0}},
                        {"longer than the record", 4, {0, 4, 0, 0}},
                        {"a length that wraps", 4, {0xFF, 0xFF, 0xFF, 0xFF}},
                        {"a name behind its end", 9, {200}},
                        {"a value behind its end", 16, {0, 4, 0, 0}},
                        {"a value that begins behind its end", 20, {0xFF, 0xFF}},
                        {"too short for its runs", 8, {1}}};
  for (const Damage& damage : all) {
    Bytes record = Used(RecordBuilder().Resident(kData, {}, Bytes(8)));
    const size_t first = FirstOf(record);
    for (size_t i = 0; i < damage.bytes.size(); ++i) {
      record[first + damage.offset + i] = static_cast<std::byte>(damage.bytes[i]);
    }
    AttributeCursor cursor{.record = record, .offset = first};
    EXPECT_FALSE(NextAttribute(cursor)) << damage.what;
    EXPECT_TRUE(cursor.malformed) << damage.what;
  }
}

TEST(MftRecord, RunsThatBeginBehindTheirAttributeEndTheRecord) {
  Bytes record = Used(RecordBuilder().NonResident(kData, {}, MappingPairs({{300, 3}}), 12'000));
  const size_t first = FirstOf(record);
  StoreLe(std::span(record), first + 32, uint16_t{0xFFFF});
  AttributeCursor cursor{.record = record, .offset = first};
  EXPECT_FALSE(NextAttribute(cursor));
  EXPECT_TRUE(cursor.malformed);
}

TEST(MftRecord, AttributesEndWhereTheRecordDoes) {
  Bytes record = Used(RecordBuilder().Resident(kData, {}, Bytes(8)));
  record.resize(record.size() - 8);  // the end mark, and what it is filled up with
  AttributeCursor cursor{.record = record, .offset = FirstOf(record)};
  EXPECT_TRUE(NextAttribute(cursor));
  EXPECT_FALSE(NextAttribute(cursor));
  EXPECT_TRUE(cursor.malformed);
}

TEST(MftRecord, BytesThatEndInTheHeaderHaveNoAttributes) {
  const Bytes whole = Used(RecordBuilder().Resident(kData, {}, Bytes(8)));
  for (size_t size = 0; size < FirstOf(whole); ++size) {
    const Bytes part(whole.begin(), whole.begin() + static_cast<ptrdiff_t>(size));
    AttributeCursor cursor{.record = part, .offset = FirstOf(whole)};
    EXPECT_FALSE(NextAttribute(cursor)) << size;
    EXPECT_TRUE(cursor.malformed) << size;
  }
}

TEST(MftRecord, AFileNameHasAKnownSpaceAndAllItsUnits) {
  Bytes value(66 + 6);
  value[64] = std::byte{3};
  EXPECT_TRUE(ParseFileName(value));
  EXPECT_FALSE(ParseFileName(std::span(value).first(65)));
  EXPECT_FALSE(ParseFileName(std::span(value).first(71)));
  value[65] = std::byte{4};
  EXPECT_FALSE(ParseFileName(value));
}

}  // namespace
}  // namespace quilmark
