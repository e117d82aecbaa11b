#include "platform/ntfs/ntfs_stream.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "support/ntfs_builder.h"

namespace quilmark {
namespace {

// Two extents with a hole between them on a volume full of 0xAA; bytes from 150 on were never written.
struct PartlyWritten : testing::Test {
  MemoryVolume volume{.size = 1'000};
  NtfsStream stream{.size = 200,
                    .initialized = 150,
                    .extents = {{.start = StreamOffset(0), .length = 64, .place = ByteOffset(400)},
                                {.start = StreamOffset(100), .length = 156, .place = ByteOffset(600)}}};
  PartlyWritten() { volume.stretches[0] = Bytes(1'000, std::byte{0xAA}); }

  Bytes Expected(uint64_t offset, size_t length) const {
    Bytes bytes;
    for (uint64_t at = offset; at < std::min<uint64_t>(offset + length, stream.size); ++at) {
      const bool isStored = (at < 64 || at >= 100) && at < 150;
      bytes.push_back(isStored ? std::byte{0xAA} : std::byte{0});
    }
    return bytes;
  }
};

TEST_F(PartlyWritten, WhatWasNeverWrittenReadsAsZerosWhereverAReadBegins) {
  const auto source = volume.Open();
  for (uint64_t offset = 0; offset <= 201; ++offset) {
    for (size_t length = 0; length <= 210; length += 7) {
      Bytes bytes(length, std::byte{0x55});
      bytes.resize(ReadStream(*source, stream, StreamOffset(offset), bytes));
      ASSERT_EQ(bytes, Expected(offset, length)) << offset << " " << length;
    }
  }
}

TEST_F(PartlyWritten, NothingIsStoredBehindWhatWasWritten) {
  EXPECT_EQ(NextStored(stream, StreamOffset(10)), StreamOffset(10));
  EXPECT_EQ(NextStored(stream, StreamOffset(70)), StreamOffset(100));
  EXPECT_EQ(NextStored(stream, StreamOffset(149)), StreamOffset(149));
  EXPECT_EQ(NextStored(stream, StreamOffset(150)), StreamOffset(200));
  stream.initialized = 80;  // ends in the hole
  EXPECT_EQ(NextStored(stream, StreamOffset(70)), StreamOffset(200));
}

TEST_F(PartlyWritten, ABadPlaceBehindWhatWasWrittenIsNotRead) {
  volume.badPlaces = {{650, 1'000}};  // byte 150 and on
  const auto source = volume.Open();
  Bytes bytes(200);
  EXPECT_EQ(ReadStream(*source, stream, StreamOffset(0), bytes), 200u);
}

}  // namespace
}  // namespace quilmark
