#include "platform/crc32.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace quilmark {
namespace {

uint32_t Of(std::string_view text, uint32_t before = 0) {
  return Crc32(std::as_bytes(std::span(text)), before);
}

uint32_t BitByBit(std::string_view text) {
  uint32_t crc = 0xFFFF'FFFF;
  for (const char byte : text) {
    crc ^= static_cast<unsigned char>(byte);
    for (int bit = 0; bit < 8; ++bit) crc = crc >> 1 ^ ((crc & 1) != 0 ? 0xEDB8'8320u : 0);
  }
  return ~crc;
}

TEST(Crc32, IsThatOfItsCheckValue) {
  EXPECT_EQ(Of("123456789"), 0xCBF4'3926u);
  EXPECT_EQ(Of(""), 0u);
}

TEST(Crc32, IsTheSameByAnyNumberOfBytes) {
  std::mt19937 random(32);
  std::string text;
  for (size_t size = 0; size < 200; ++size) {
    ASSERT_EQ(Of(text), BitByBit(text)) << size;
    const size_t half = size / 3;
    ASSERT_EQ(Of(text.substr(half), Of(text.substr(0, half))), BitByBit(text)) << size;
    text.push_back(static_cast<char>(random()));
  }
}

}  // namespace
}  // namespace quilmark
