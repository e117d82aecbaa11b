// What is mended in the library (cmake/guard_miniz.cmake), and that it still does what it did.
#include <gtest/gtest.h>
#include <miniz.h>

#include <algorithm>
#include <cstdlib>
#include <random>
#include <string>
#include <vector>

#include "support/zip_builder.h"

namespace quilmark {
namespace {

// Each bit pair of a stream can copy 258 bytes at most.
constexpr size_t kMostExpansion = 258 * 8 / 2;

struct Inflated {
  tinfl_status status;
  size_t size;
};

Inflated Inflate(std::string_view stream, std::vector<unsigned char>& out) {
  tinfl_decompressor inflator;
  tinfl_init(&inflator);
  size_t taken = stream.size();
  size_t made = out.size();
  const tinfl_status status =
      tinfl_decompress(&inflator, reinterpret_cast<const mz_uint8*>(stream.data()), &taken, out.data(),
                       out.data(), &made, TINFL_FLAG_USING_NON_WRAPPING_OUTPUT_BUF);
  return {status, made};
}

TEST(Miniz, FailsAtAStreamWithoutCodes) {
  // A dynamic block in four bytes, all of whose code lengths are zero; whatever follows it.
  const std::string block("\x05\0\0\0", 4);
  std::vector<unsigned char> out(1 << 20);
  for (size_t more = 0; more < 16; ++more) {
    for (const char filler : {'\0', '\xFF', '\x55'}) {
      const Inflated done = Inflate(block + std::string(more, filler), out);
      EXPECT_LT(done.status, 0) << more;
      EXPECT_EQ(done.size, 0u) << more;
    }
  }
}

TEST(Miniz, EndsEveryShortStream) {
  std::mt19937 random(17);
  std::vector<unsigned char> out(1 << 16);
  for (int i = 0; i < 60'000; ++i) {
    std::string stream(4 + static_cast<size_t>(i) % 12, '\0');
    for (char& byte : stream) byte = static_cast<char>(random());
    stream[0] = static_cast<char>((stream[0] & ~7) | 5);  // a last block with codes of its own
    if (i % 2 == 0) stream[2] &= 0x1F;                    // of few lengths
    const Inflated done = Inflate(stream, out);
    ASSERT_LE(done.size, kMostExpansion * stream.size()) << testing::PrintToString(stream);
    ASSERT_NE(done.status, TINFL_STATUS_HAS_MORE_OUTPUT) << testing::PrintToString(stream);
  }
}

TEST(Miniz, InflatesCodesOfOneSymbolAndOfNone) {
  // "aaaaa" as literals, with no code for distances and with one.
  const std::string withNone("\x05\xC0\x81\x08\0\0\0\0\x20\xD6\xFD\x25\x0E\x04", 14);
  const std::string withOne("\x05\xC0\x81\x08\0\0\0\0\x20\xD6\xFD\x25\x1E\x04", 14);
  for (const std::string& stream : {withNone, withOne, Deflate("aaaaa")}) {
    std::vector<unsigned char> out(5);
    EXPECT_EQ(Inflate(stream, out).status, TINFL_STATUS_DONE);
    EXPECT_EQ(std::string(out.begin(), out.end()), "aaaaa");
  }
}

TEST(Miniz, InflatesWhatItDeflates) {
  std::string text;
  for (int i = 0; i < 5000; ++i) text += std::to_string(i * i) + (i % 7 == 0 ? "<w:t>" : " ");
  std::vector<unsigned char> out(text.size());
  EXPECT_EQ(Inflate(Deflate(text), out).status, TINFL_STATUS_DONE);
  EXPECT_EQ(std::string(out.begin(), out.end()), text);
}

// The largest piece of memory that was asked for.
size_t largestPiece = 0;
void* Allocate(void*, size_t items, size_t size) {
  largestPiece = std::max(largestPiece, items * size);
  return items * size > (1u << 20) ? nullptr : std::malloc(items * size);
}
void* Reallocate(void*, void* place, size_t items, size_t size) {
  largestPiece = std::max(largestPiece, items * size);
  return items * size > (1u << 20) ? nullptr : std::realloc(place, items * size);
}

size_t LargestPieceOf(const std::string& archive, bool& isOpen) {
  mz_zip_archive zip{};
  zip.m_pAlloc = Allocate;
  zip.m_pRealloc = Reallocate;
  zip.m_pFree = [](void*, void* place) { std::free(place); };
  largestPiece = 0;
  isOpen = mz_zip_reader_init_mem(&zip, archive.data(), archive.size(), 0);
  if (isOpen) mz_zip_reader_end(&zip);
  return largestPiece;
}

TEST(Miniz, RefusesADirectoryWhoseEndWraps) {
  const std::vector<ZipEntry> entries{{.name = "a.xml", .data = "text"}};
  bool isOpen = false;
  LargestPieceOf(MakeZip(entries, {.isZip64 = true}), isOpen);
  ASSERT_TRUE(isOpen);
  for (const uint64_t size : {uint64_t{60}, uint64_t{0x1000'0000}, uint64_t{0xFFFF'FFF0}}) {
    const ZipFrame frame{.isZip64 = true, .directoryOffset = 40 - size, .directorySize = size};
    EXPECT_LT(LargestPieceOf(MakeZip(entries, frame), isOpen), 100'000u) << size;
    EXPECT_FALSE(isOpen) << size;
  }
}

TEST(Miniz, RefusesAnEntryWhoseEndWraps) {
  const std::string text = "text";
  const uint64_t packedSize = 0 - uint64_t{8};
  ZipEntry entry{.name = "a.xml", .data = text, .packedSize = 0xFFFF'FFFF};
  entry.extra = LeBytes(1, 2) + LeBytes(8, 2) + LeBytes(packedSize, 8);
  const std::string archive = MakeZip({entry});
  mz_zip_archive zip{};
  ASSERT_TRUE(mz_zip_reader_init_mem(&zip, archive.data(), archive.size(), 0));
  char out[4];
  EXPECT_FALSE(mz_zip_reader_extract_to_mem(&zip, 0, out, sizeof out, 0));
  EXPECT_EQ(mz_zip_get_last_error(&zip), MZ_ZIP_INVALID_HEADER_OR_CORRUPTED);
  mz_zip_reader_end(&zip);
}

}  // namespace
}  // namespace quilmark
