#include "search/scan/scan_kernel.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

#include "index/tables/name_pool.h"
#include "platform/text.h"
#include "support/volumes.h"

namespace quilmark {
namespace {

// The texts of one pool that hold the needle, by the obvious test.
std::vector<uint64_t> PlainHits(const std::vector<std::u16string>& folded, std::u16string_view needle) {
  std::vector<uint64_t> hits(folded.size() / 64 + 2);
  for (size_t i = 0; i < folded.size(); ++i) {
    if (folded[i].find(needle) != std::u16string::npos) hits[i / 64] |= uint64_t{1} << (i % 64);
  }
  return hits;
}

struct Texts {
  NamePool pool;
  std::vector<std::u16string> folded;

  void Add(std::u16string_view name) {
    StoreName(pool, name);
    folded.push_back(FoldText(name));
  }
  std::vector<uint64_t> Hits(const ScanKernelRow& kernel, const Needle& needle) const {
    std::vector<uint64_t> hits(folded.size() / 64 + 2);
    for (const NameChunk& chunk : pool.chunks) {
      kernel.scan(needle, chunk.text.get(), chunk.text.get() + chunk.used, hits.data(), chunk.firstText);
    }
    return hits;
  }
};

// Each test runs every kernel that this processor has.
class ScanKernelTest : public testing::TestWithParam<ScanKernelRow> {
 protected:
  void SetUp() override { ASSERT_TRUE(GetParam().runsHere()); }
  bool Agrees(const Texts& texts, std::u16string_view needle) const {
    return texts.Hits(GetParam(), MakeNeedle(needle)) == PlainHits(texts.folded, needle);
  }
};

std::vector<ScanKernelRow> KernelsHere() {
  std::vector<ScanKernelRow> kernels(ScanKernels().begin(), ScanKernels().end());
  std::erase_if(kernels, [](const ScanKernelRow& row) { return !row.runsHere(); });
  return kernels;
}

std::string KernelName(const testing::TestParamInfo<ScanKernelRow>& kernel) { return kernel.param.name; }

INSTANTIATE_TEST_SUITE_P(All, ScanKernelTest, testing::ValuesIn(KernelsHere()), KernelName);

TEST_P(ScanKernelTest, EveryNeedleLengthAtEveryPlaceOfAName) {
  for (size_t length = 1; length <= 40; ++length) {
    std::u16string needle;
    for (size_t i = 0; i < length; ++i)
      needle.push_back(static_cast<char16_t>(u'a' + (i * 7 + length) % 26));
    Texts texts;
    for (size_t before = 0; before < 70; ++before) {
      texts.Add(std::u16string(before, u'-') + needle + std::u16string(before % 5, u'-'));
      texts.Add(std::u16string(before, u'-') + needle.substr(0, length - 1));  // all but the last unit
      texts.Add(std::u16string(before, u'-') + needle.substr(1));
    }
    ASSERT_TRUE(Agrees(texts, needle)) << "length " << length;
  }
}

TEST_P(ScanKernelTest, HitsInEveryNameAndInNone) {
  Texts texts;
  for (int i = 0; i < 1'000; ++i) texts.Add(u"eeee");
  EXPECT_TRUE(Agrees(texts, u"e"));
  EXPECT_TRUE(Agrees(texts, u"ee"));
  EXPECT_TRUE(Agrees(texts, u"eee"));
  EXPECT_TRUE(Agrees(texts, u"f"));
}

TEST_P(ScanKernelTest, EmptyNamesAreCounted) {
  Texts texts;
  for (int i = 0; i < 500; ++i) texts.Add(i % 100 == 99 ? u"x" : u"");
  EXPECT_TRUE(Agrees(texts, u"x"));
}

TEST_P(ScanKernelTest, NeedleAcrossTwoNamesIsNoHit) {
  Texts texts;
  for (int i = 0; i < 100; ++i) {
    texts.Add(u"ab");
    texts.Add(u"cd");
  }
  EXPECT_TRUE(Agrees(texts, u"bc"));
  EXPECT_TRUE(Agrees(texts, u"abcd"));
  EXPECT_TRUE(Agrees(texts, u"ba"));  // name and folded copy
}

TEST_P(ScanKernelTest, UpperCaseOnDiskIsFoundByItsFoldedCopy) {
  Texts texts;
  for (int i = 0; i < 300; ++i)
    texts.Add(i % 3 == 0 ? u"README" : u"\u041f\u0420\u0418\u041c\u0415\u0420");
  EXPECT_TRUE(Agrees(texts, u"readme"));
  EXPECT_TRUE(Agrees(texts, u"\u043f\u0440\u0438"));
}

TEST_P(ScanKernelTest, OtherBitsStayAsTheyAre) {
  Texts texts;
  for (int i = 0; i < 200; ++i) texts.Add(u"abc");
  std::vector<uint64_t> hits(8, 0);
  const NameChunk& chunk = texts.pool.chunks[0];
  GetParam().scan(MakeNeedle(u"b"), chunk.text.get(), chunk.text.get() + chunk.used, hits.data(), 37);
  for (size_t i = 0; i < 8 * 64; ++i) {
    ASSERT_EQ(hits[i / 64] >> (i % 64) & 1, static_cast<uint64_t>(i >= 37 && i < 237)) << i;
  }
}

TEST_P(ScanKernelTest, LongestNeedleIsComparedWhole) {
  std::u16string needle(kLongestNeedle, u'x');
  Texts texts;
  texts.Add(needle);
  texts.Add(needle.substr(1));
  texts.Add(u"y" + needle);
  needle.back() = u'z';
  texts.Add(needle);
  EXPECT_TRUE(Agrees(texts, needle));
}

// Names and needles over so small an alphabet that most pairs come near to a hit.
TEST_P(ScanKernelTest, AgreesWithThePlainTestOnRandomNames) {
  std::mt19937 random(5);
  uint64_t pairs = 0, hits = 0;
  while (pairs < 2'000'000) {
    Texts texts;
    texts.pool.chunkCapacity = texts.pool.usedInChunk = 500 + random() % 20'000;
    const size_t count = 1 + random() % 3'000;
    const size_t longest = 1 + random() % 60;
    while (texts.folded.size() < count) texts.Add(RandomName(random, longest));
    for (int i = 0; i < 20; ++i) {
      std::u16string needle = FoldText(RandomName(random, 1 + random() % 6));
      const std::u16string& name = texts.folded[random() % count];
      if (random() % 2 == 0 && !name.empty())
        needle = name.substr(random() % name.size(), 1 + random() % 40);
      if (needle.empty()) continue;
      const auto expected = PlainHits(texts.folded, needle);
      ASSERT_EQ(texts.Hits(GetParam(), MakeNeedle(needle)), expected);
      pairs += count;
      for (const uint64_t word : expected) hits += static_cast<uint64_t>(__builtin_popcountll(word));
    }
  }
  EXPECT_GT(hits, pairs / 100);
}

TEST(Needle, AnchorsAreItsRarestUnits) {
  const Needle needle = MakeNeedle(u"equip");
  EXPECT_EQ(needle.text[needle.firstAnchor], u'q');
  EXPECT_EQ(needle.text[needle.secondAnchor], u'p');
  EXPECT_EQ(MakeNeedle(u"e").secondAnchor, 0u);
  const Needle same = MakeNeedle(u"ee");
  EXPECT_NE(same.firstAnchor, same.secondAnchor);
}

}  // namespace
}  // namespace quilmark
