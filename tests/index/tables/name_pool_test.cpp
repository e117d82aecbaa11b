#include "index/tables/name_pool.h"

#include <gtest/gtest.h>

#include <random>

#include "platform/text.h"
#include "support/volumes.h"

namespace quilmark {
namespace {

TEST(NamePool, FirstStoreOpensTheFirstChunk) {
  NamePool pool;
  EXPECT_EQ(pool.usedInChunk, pool.chunkCapacity);
  StoreName(pool, u"a.txt");
  EXPECT_EQ(pool.chunks.size(), 1u);
  EXPECT_EQ(pool.usedInChunk, 2 * 5u + 2);
}

TEST(NamePool, FoldedCopyStandsBehindTheName) {
  NamePool pool;
  const char16_t* const name = StoreName(pool, u"Ab\u0416.TXT");
  EXPECT_EQ(std::u16string_view(name), u"Ab\u0416.TXT");
  EXPECT_EQ(std::u16string_view(name + 8), u"ab\u0436.txt");
}

TEST(NamePool, EmptyNameIsTwoNuls) {
  NamePool pool;
  const char16_t* const name = StoreName(pool, u"");
  EXPECT_EQ(name[0], 0);
  EXPECT_EQ(name[1], 0);
  EXPECT_EQ(pool.usedInChunk, 2u);
}

TEST(NamePool, NameThatDoesNotFitOpensAChunkAndLeavesTheTail) {
  NamePool pool;
  pool.chunkCapacity = pool.usedInChunk = 20;
  const char16_t* const first = StoreName(pool, u"abcdef");  // 14 units
  const char16_t* const second = StoreName(pool, u"abc");    // 8 more
  EXPECT_EQ(pool.chunks.size(), 2u);
  EXPECT_EQ(pool.chunks[0].used, 14u);
  EXPECT_EQ(pool.chunks[1].text.get(), second);
  EXPECT_EQ(pool.chunks[1].firstText, 1u);
  EXPECT_EQ(std::u16string_view(first), u"abcdef");
}

TEST(NamePool, NameThatNoChunkCanHoldGetsOneOfItsOwn) {
  NamePool pool;
  pool.chunkCapacity = pool.usedInChunk = 20;
  const std::u16string longName(300, u'X');
  const char16_t* const name = StoreName(pool, longName);
  EXPECT_EQ(std::u16string_view(name), longName);
  EXPECT_EQ(std::u16string_view(name + 301), std::u16string(300, u'x'));
  StoreName(pool, u"a");
  EXPECT_EQ(pool.chunks.size(), 2u);
}

TEST(NamePool, ExactFitStaysInTheChunk) {
  NamePool pool;
  pool.chunkCapacity = pool.usedInChunk = 20;
  StoreName(pool, u"abcd");  // 10 units
  StoreName(pool, u"abcd");
  EXPECT_EQ(pool.chunks.size(), 1u);
  EXPECT_EQ(pool.usedInChunk, 20u);
}

TEST(NamePool, ResetLeavesItAsNew) {
  NamePool pool;
  for (int i = 0; i < 100; ++i) StoreName(pool, u"name");
  ResetNamePool(pool);
  EXPECT_TRUE(pool.chunks.empty());
  EXPECT_TRUE(pool.marks.empty());
  EXPECT_EQ(pool.textCount, 0u);
  EXPECT_EQ(pool.usedInChunk, pool.chunkCapacity);
}

TEST(NamePool, NamesStayInPlaceAndMarksPointAtThem) {
  NamePool pool;
  pool.chunkCapacity = pool.usedInChunk = 700;
  std::mt19937 random(1);
  std::vector<std::pair<const char16_t*, std::u16string>> stored;
  for (int i = 0; i < 5'000; ++i) {
    std::u16string name = RandomName(random, 60);
    const char16_t* const text = StoreName(pool, name);
    stored.emplace_back(text, std::move(name));
  }
  ASSERT_EQ(pool.textCount, stored.size());
  for (size_t i = 0; i < stored.size(); ++i) {
    const auto& [text, name] = stored[i];
    ASSERT_EQ(std::u16string_view(text, name.size()), name);
    ASSERT_EQ(std::u16string_view(text + name.size() + 1), FoldText(name));
    if (i % kTextsPerMark == 0) {
      ASSERT_EQ(pool.marks[i / kTextsPerMark], text);
    }
  }
}

}  // namespace
}  // namespace quilmark
