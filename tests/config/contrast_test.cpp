#include "config/contrast.h"

#include <gtest/gtest.h>

namespace quilmark {
namespace {

constexpr Color kBlack = ColorOfHex(0), kWhite = ColorOfHex(0xFFFFFF), kGray = ColorOfHex(0x767676);

TEST(Contrast, RunsFromOneToTwentyOne) {
  EXPECT_DOUBLE_EQ(ContrastRatio(kGray, kGray), 1);
  EXPECT_DOUBLE_EQ(ContrastRatio(kBlack, kWhite), 21);
  EXPECT_DOUBLE_EQ(ContrastRatio(kWhite, kBlack), 21);
  EXPECT_NEAR(ContrastRatio(kGray, kWhite), 4.54, 0.01);  // the published example
}

TEST(Contrast, LeavesAColourThatCanBeRead) { EXPECT_EQ(ReadableOn(kWhite, kGray), kGray); }

TEST(Contrast, MovesAColourNoFurtherThanItMust) {
  for (const Color ground : {kWhite, kBlack, ColorOfHex(0x263A33), ColorOfHex(0xD8F3E6)}) {
    const Color found = ReadableOn(ground, ground);
    EXPECT_GE(ContrastRatio(ground, found), kReadableContrast);
    EXPECT_LT(ContrastRatio(ground, found), kReadableContrast + 1);
  }
}

TEST(Contrast, FindsLettersOnEveryGround) {
  for (int level = 0; level < 256; ++level) {
    const auto gray = ColorOfHex(static_cast<uint32_t>(level * 0x010101));
    EXPECT_GE(ContrastRatio(gray, ReadableOn(gray, gray)), kReadableContrast) << level;
    EXPECT_GE(ContrastRatio(gray, LettersOn(gray)), kReadableContrast) << level;
  }
}

}  // namespace
}  // namespace quilmark
