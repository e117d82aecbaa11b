#include "platform/byte_source.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "support/scratch_folder.h"

namespace quilmark {
namespace {

TEST(ByteSource, AFileOfAnyLengthIsReadToItsLastByte) {
  ScratchFolder folder;
  for (const size_t size : {1u, 511u, 512u, 513u, 4'095u, 4'096u, 4'097u, 10'000u}) {
    SCOPED_TRACE(size);
    std::string contents(size, '\0');
    for (size_t i = 0; i < size; ++i) contents[i] = static_cast<char>(i * 31 + i / 512);
    folder.MakeFile("image", contents);
    const auto source = OpenByteSource(folder.PathOf(u"image"));
    ASSERT_NE(source, nullptr);
    EXPECT_EQ(source->Size(), size);
    for (size_t offset = 0; offset <= size; offset += 1 + size / 37) {
      for (const size_t length : {1u, 512u, 4'096u, 20'000u}) {
        std::vector<std::byte> buffer(length);
        const size_t got = source->ReadAt(ByteOffset(offset), buffer);
        ASSERT_EQ(got, std::min(length, size - offset)) << offset << " " << length;
        const auto wanted = std::as_bytes(std::span(contents)).subspan(offset, got);
        ASSERT_TRUE(std::equal(wanted.begin(), wanted.end(), buffer.begin())) << offset << " " << length;
      }
    }
  }
}

TEST(ByteSource, WhatIsNotThereCannotBeOpened) {
  ScratchFolder folder;
  EXPECT_EQ(OpenByteSource(folder.PathOf(u"missing")), nullptr);
}

}  // namespace
}  // namespace quilmark
