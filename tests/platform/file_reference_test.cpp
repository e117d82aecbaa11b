#include "platform/file_reference.h"

#include <gtest/gtest.h>

#include <concepts>
#include <type_traits>

#include "platform/byte_offset.h"

namespace quilmark {
namespace {

// No number becomes another by itself, and nothing compares numbers of two kinds.
template <typename A, typename B>
constexpr bool kApart = !std::is_convertible_v<A, B> && !std::is_convertible_v<B, A> &&
                        !std::equality_comparable_with<A, B> && !std::totally_ordered_with<A, B>;
static_assert(kApart<FileReference, RecordNumber>);
static_assert(kApart<FileReference, uint64_t>);
static_assert(kApart<RecordNumber, uint64_t>);
static_assert(kApart<ByteOffset, RecordNumber>);
static_assert(kApart<ByteOffset, uint64_t>);
static_assert(!std::is_constructible_v<FileReference, RecordNumber>);
static_assert(!std::is_constructible_v<RecordNumber, FileReference>);
static_assert(std::is_trivially_copyable_v<FileReference>);

TEST(FileReference, IsPutTogetherFromItsPartsAndTakenApart) {
  for (const uint64_t number : {uint64_t{0}, uint64_t{5}, kRecordNumberMask}) {
    for (const uint16_t sequence : {uint16_t{0}, uint16_t{1}, uint16_t{0xFFFF}}) {
      const FileReference reference = MakeReference(RecordNumber(number), sequence);
      EXPECT_EQ(RecordNumberOf(reference), RecordNumber(number));
      EXPECT_EQ(SequenceOf(reference), sequence);
      EXPECT_EQ(reference.value, MakeReference(number, sequence)) << "as the index keeps it";
    }
  }
}

TEST(FileReference, HasItsSequenceAboveTheRecordNumber) {
  EXPECT_EQ(MakeReference(RecordNumber(0x1234), 0xABCD).value, 0xABCD'0000'0000'1234u);
}

TEST(RecordNumber, CountsUp) {
  RecordNumber number(kRecordNumberMask - 1);
  EXPECT_EQ(++number, RecordNumber(kRecordNumberMask));
  EXPECT_LT(RecordNumber(1), RecordNumber(2));
}

}  // namespace
}  // namespace quilmark
