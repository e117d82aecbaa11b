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

// A page whose records have names of a few units, 72 bytes each.
std::vector<std::byte> PageOf(const std::vector<std::u16string>& names) {
  auto block = BlockOf(names);
  block.erase(block.begin(), block.begin() + kUsnPositionBytes);
  block.resize(4'096);
  return block;
}

// References of the records of a page.
std::vector<uint64_t> StoredIn(std::span<const std::byte> page) {
  std::vector<uint64_t> files;
  StoredUsnCursor cursor{.page = page};
  while (const auto stored = NextStoredUsnRecord(cursor)) files.push_back(stored->record.frn.value);
  EXPECT_FALSE(NextStoredUsnRecord(cursor).has_value()) << "asked again at the end";
  return files;
}

using Files = std::vector<uint64_t>;

TEST(StoredUsnCursor, GivesTheRecordsOfAPageWithTheirPlacesAndTimes) {
  auto page = PageOf({u"abcd", u"efgh"});
  StoreLe(std::span(page), 72 + 32, uint64_t{7'777});
  StoredUsnCursor cursor{.page = page};
  EXPECT_EQ(NextStoredUsnRecord(cursor)->offset, 0u);
  const auto second = NextStoredUsnRecord(cursor);
  ASSERT_TRUE(second.has_value());
  EXPECT_EQ(second->offset, 72u);
  EXPECT_EQ(second->timestamp, 7'777u);
  std::u16string units;
  EXPECT_EQ(NameUnits(second->record, units), u"efgh");
  EXPECT_FALSE(NextStoredUsnRecord(cursor).has_value()) << "zeros fill the rest";
}

TEST(StoredUsnCursor, AReferenceOf128BitsIsPassedOver) {
  for (const size_t offset : {16u, 32u}) {  // the upper halves of both references
    std::vector<std::byte> page(4'096);
    StoreLe(std::span(page), 0, uint32_t{80});
    StoreLe(std::span(page), 4, uint16_t{3});
    StoreLe(std::span(page), 8, uint64_t{40});
    EXPECT_EQ(StoredIn(page), Files{40});
    StoreLe(std::span(page), offset, uint64_t{1});
    EXPECT_EQ(StoredIn(page), Files()) << offset;
  }
}

TEST(StoredUsnCursor, WhatIsNoLengthEndsThePage) {
  for (const uint32_t badLength : {0u, 31u, 44u, 4'096u, 0xFFFF'FFF8u}) {
    auto page = PageOf({u"abcd", u"efgh", u"ijkl"});
    StoreLe(std::span(page), 72, badLength);
    EXPECT_EQ(StoredIn(page), Files{100}) << badLength;
  }
}

TEST(StoredUsnCursor, EveryTruncationGivesWholeRecordsOnly) {
  const auto page = PageOf({u"abcd", u"efgh", u"ijkl"});
  for (size_t size = 0; size <= 3 * 72; ++size) {
    // In a block of its own, so that a read behind it is seen.
    const std::vector<std::byte> part(page.begin(), page.begin() + static_cast<ptrdiff_t>(size));
    EXPECT_EQ(StoredIn(part).size(), size / 72) << size;
  }
}

}  // namespace
}  // namespace quilmark
