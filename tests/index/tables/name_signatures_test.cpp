#include "index/tables/name_signatures.h"

#include <gtest/gtest.h>

#include <random>

#include "platform/text.h"
#include "support/volumes.h"

namespace quilmark {
namespace {

bool MayHold(const NameSignatures& signatures, uint32_t text, const SignatureTest& test) {
  const uint32_t block = text / kTextsPerMark;
  const BlockMask blocks = CandidateBlocks(signatures, block / kBlocksPerPage, test);
  return (blocks >> (block % kBlocksPerPage) & 1) != 0;
}

SignatureTest TestOf(std::u16string_view needle) {
  SignatureTest test;
  AddNeedle(test, needle);
  return test;
}

TEST(NameSignatures, EverySubstringOfANameKeepsItsBlock) {
  std::mt19937 random(4);
  NameSignatures signatures;
  for (uint32_t text = 0; text < 70'000; text += static_cast<uint32_t>(1 + random() % 40)) {
    const std::u16string name = FoldText(RandomName(random, 40));
    AddToSignatures(signatures, text, name);
    const size_t at = name.empty() ? 0 : random() % name.size();
    const std::u16string needle = name.substr(at, 1 + random() % 40);
    ASSERT_TRUE(MayHold(signatures, text, TestOf(needle)));
  }
}

TEST(NameSignatures, BlockWithoutTheNeedleIsRuledOut) {
  NameSignatures signatures;
  for (uint32_t text = 0; text < 64; ++text) AddToSignatures(signatures, text, u"report");
  for (uint32_t text = 64; text < 128; ++text) AddToSignatures(signatures, text, u"invoice");
  EXPECT_TRUE(MayHold(signatures, 0, TestOf(u"epor")));
  EXPECT_FALSE(MayHold(signatures, 64, TestOf(u"epor")));
  EXPECT_FALSE(MayHold(signatures, 0, TestOf(u"\u65b0")));
}

TEST(NameSignatures, NeedleOfTwoAsciiLettersRulesNothingOut) {
  NameSignatures signatures;
  AddToSignatures(signatures, 0, u"report");
  EXPECT_TRUE(MayHold(signatures, 0, TestOf(u"zz")));
}

TEST(NameSignatures, KeyOfInitialsIsFoundByItsPairs) {
  NameSignatures signatures;
  AddToSignatures(signatures, 0, u"\u5317\u4eac 2024.txt");
  AddInitialsToSignatures(signatures, 0, u"\u5317\u4eac 2024.txt");
  SignatureTest inside, outside;
  AddInitialsPattern(inside, u"bj20");
  AddInitialsPattern(outside, u"bjt");
  EXPECT_TRUE(MayHold(signatures, 0, inside));
  EXPECT_FALSE(MayHold(signatures, 0, outside));
}

TEST(NameSignatures, LongNeedleStaysWithinTheRowLimit) {
  std::u16string needle;
  for (char16_t unit = 0; unit < 200; ++unit) needle.push_back(static_cast<char16_t>(0x4E00 + unit));
  const SignatureTest test = TestOf(needle);
  EXPECT_EQ(test.count, SignatureTest::kMostRows);
}

}  // namespace
}  // namespace quilmark
