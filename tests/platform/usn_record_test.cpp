#include "platform/usn_record.h"

#include <gtest/gtest.h>

#include <vector>

#include "platform/bytes.h"

namespace quilmark {
namespace {

std::vector<std::byte> BlockOf(const std::vector<std::u16string>& names) {
  std::vector<std::byte> block(8);
  for (size_t i = 0; i < names.size(); ++i) {
    const size_t offset = block.size();
    block.resize(offset + UsnRecordLength(names[i].size()));
    PutUsnRecord(std::span(block).subspan(offset),
                 {.frn = FileReference(100 + i),
                  .parentFrn = FileReference(5),
                  .usn = 4096,
                  .reason = kUsnReasonFileCreate,
                  .attributes = kFileAttributeDirectory,
                  .name = std::as_bytes(std::span(names[i]))},
                 0);
  }
  return block;
}

TEST(UsnCursor, GivesBackWhatWasWritten) {
  const auto block = BlockOf({u"", u"a", u"ab", u"Ordner mit Umläuten äöü.txt", u"文件"});
  UsnCursor cursor{.block = block};
  std::u16string units;
  for (const char16_t* name : {u"", u"a", u"ab", u"Ordner mit Umläuten äöü.txt", u"文件"}) {
    const auto record = NextUsnRecord(cursor);
    ASSERT_TRUE(record.has_value());
    EXPECT_EQ(NameUnits(*record, units), name);
    EXPECT_EQ(record->parentFrn, FileReference(5));
    EXPECT_EQ(record->usn, 4096);
    EXPECT_EQ(record->reason, kUsnReasonFileCreate);
    EXPECT_EQ(record->attributes, kFileAttributeDirectory);
  }
  EXPECT_FALSE(NextUsnRecord(cursor).has_value());
  EXPECT_FALSE(cursor.malformed);
}

TEST(UsnCursor, BadLengthEndsTheBlockAndKeepsWhatCameBefore) {
  for (const uint32_t badLength : {0u, 40u, 63u, 73u, 65'536u, 0xFFFF'FFFFu}) {
    SCOPED_TRACE(badLength);
    auto block = BlockOf({u"first", u"second"});
    const size_t second = 8 + UsnRecordLength(5);
    StoreLe(std::span(block), second, badLength);
    UsnCursor cursor{.block = block};
    EXPECT_EQ(NextUsnRecord(cursor)->frn, FileReference(100));
    EXPECT_FALSE(NextUsnRecord(cursor).has_value());
    EXPECT_TRUE(cursor.malformed);
  }
}

TEST(UsnCursor, ANameThatRunsPastItsRecordEndsTheBlock) {
  for (const uint16_t offset : {uint16_t{62}, uint16_t{64}, uint16_t{0xFFFF}}) {
    SCOPED_TRACE(offset);
    auto block = BlockOf({u"ab"});
    StoreLe(std::span(block), 8 + 58, offset);
    UsnCursor cursor{.block = block};
    EXPECT_FALSE(NextUsnRecord(cursor).has_value());
    EXPECT_TRUE(cursor.malformed);
  }
}

TEST(UsnCursor, EveryTruncationGivesWholeRecordsOnly) {
  const auto block = BlockOf({u"first", u"second", u"third"});
  for (size_t size = 0; size <= block.size(); ++size) {
    UsnCursor cursor{.block = std::span(block).first(size)};
    size_t count = 0;
    while (NextUsnRecord(cursor)) ++count;
    size_t whole = 0, end = 8;
    for (const size_t units : {5u, 6u, 5u}) {
      end += UsnRecordLength(units);
      if (end <= size) ++whole;
    }
    EXPECT_EQ(count, whole) << size;
  }
}

TEST(UsnCursor, AnOddNameLosesItsLastByte) {
  auto block = BlockOf({u"abc"});
  StoreLe(std::span(block), 8 + 56, uint16_t{5});
  UsnCursor cursor{.block = block};
  std::u16string units;
  EXPECT_EQ(NameUnits(*NextUsnRecord(cursor), units), u"ab");
}

}  // namespace
}  // namespace quilmark
