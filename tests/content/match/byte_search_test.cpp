#include "content/match/byte_search.h"

#include <gtest/gtest.h>

#include <memory>
#include <random>

namespace quilmark {
namespace {

using std::literals::operator""s;

// A block that ends where its memory does: what reads past it is seen by the sanitizer.
struct TightBlock {
  explicit TightBlock(std::string_view bytes) : size(bytes.size()), memory(new char[bytes.size()]) {
    std::copy(bytes.begin(), bytes.end(), memory.get());
  }
  size_t size;
  std::unique_ptr<char[]> memory;
};

std::vector<ByteKernelRow> KernelsHere() {
  std::vector<ByteKernelRow> kernels(ByteKernels().begin(), ByteKernels().end());
  std::erase_if(kernels, [](const ByteKernelRow& row) { return !row.runsHere(); });
  return kernels;
}

// Each test runs every kernel that this processor has.
struct ByteKernelTest : testing::TestWithParam<ByteKernelRow> {
  bool Finds(const std::vector<std::string>& forms, std::string_view bytes) const {
    const TightBlock block(bytes);
    bool isFound = false;
    for (const ByteNeedle& needle : MakeByteNeedles(forms)) {
      isFound = isFound || GetParam().holds(needle, block.memory.get(), block.memory.get() + block.size);
    }
    return isFound;
  }
  static bool FindsPlainly(const std::vector<std::string>& forms, std::string_view bytes) {
    return std::any_of(forms.begin(), forms.end(), [bytes](const std::string& form) {
      return !form.empty() && bytes.find(form) != bytes.npos;
    });
  }
};

std::string KernelName(const testing::TestParamInfo<ByteKernelRow>& kernel) { return kernel.param.name; }
INSTANTIATE_TEST_SUITE_P(All, ByteKernelTest, testing::ValuesIn(KernelsHere()), KernelName);

TEST_P(ByteKernelTest, FindsAFormAtEveryPlaceOfABlock) {
  for (const std::string& form : {"q"s, "ab"s, "needle"s, std::string(70, 'x') + "y"}) {
    for (size_t before = 0; before < 140; ++before) {
      for (const size_t behind : {0u, 1u, 31u, 63u, 64u, 65u, 130u}) {
        const std::string block = std::string(before, '-') + form + std::string(behind, '-');
        ASSERT_TRUE(Finds({form}, block)) << form << " " << before << " " << behind;
        std::string other = block;
        other[before + form.size() - 1] = '-';
        ASSERT_FALSE(Finds({form}, other)) << form << " " << before << " " << behind;
      }
    }
  }
}

TEST_P(ByteKernelTest, FindsEachFormOfATermInOnePass) {
  const std::vector<std::string> forms = {"Zeit"s, "Z\0e\0i\0t\0"s};
  ASSERT_EQ(MakeByteNeedles(forms).size(), 1u);
  for (size_t before = 0; before < 140; ++before) {
    const std::string front(before, 'e'), back(70, 't');
    EXPECT_TRUE(Finds(forms, front + forms[0] + back));
    EXPECT_TRUE(Finds(forms, front + forms[1] + back));
    EXPECT_TRUE(Finds(forms, front + forms[0]));
    EXPECT_TRUE(Finds(forms, front + forms[1]));
    EXPECT_FALSE(Finds(forms, front + "Z\0e\0i\0t"s));
    EXPECT_FALSE(Finds(forms, front + "zeit"));
  }
}

TEST_P(ByteKernelTest, NothingIsInABlockThatIsShorterThanTheForm) {
  EXPECT_FALSE(Finds({"abc"}, ""));
  EXPECT_FALSE(Finds({"abc"}, "ab"));
  EXPECT_TRUE(Finds({"abc"}, "abc"));
}

TEST_P(ByteKernelTest, AgreesWithAPlainSearchOnRandomBlocks) {
  std::mt19937 random(7);
  const auto bytes = [&random](size_t size, unsigned letters) {
    std::string made(size, '\0');
    for (char& byte : made) byte = static_cast<char>("ab\0Z\xFF\x80 e"[random() % letters]);
    return made;
  };
  int found = 0;
  for (int round = 0; round < 20'000; ++round) {
    std::vector<std::string> forms;
    for (size_t i = random() % 4; i < 4; ++i) forms.push_back(bytes(random() % 9, 2 + random() % 7));
    const std::string block = bytes(random() % 300, 2 + random() % 7);
    ASSERT_EQ(Finds(forms, block), FindsPlainly(forms, block)) << "round " << round;
    found += FindsPlainly(forms, block);
  }
  EXPECT_GT(found, 2'000);
  EXPECT_LT(found, 18'000);
}

TEST(ByteNeedles, ShareThePassWhereAByteStandsInAllForms) {
  const auto needles = MakeByteNeedles({"the"s, "t\0h\0e\0"s, "the"s, ""s});
  ASSERT_EQ(needles.size(), 1u);
  EXPECT_EQ(needles[0].count, 2u);
  EXPECT_EQ(needles[0].rare, 'h');
}

TEST(ByteNeedles, StandApartWhereNone) {
  EXPECT_EQ(MakeByteNeedles({"\xD0\x96"s, "\x16\x04"s, "?"s}).size(), 3u);
  EXPECT_TRUE(MakeByteNeedles({""s}).empty());
  EXPECT_TRUE(MakeByteNeedles({}).empty());
}

TEST(ByteNeedles, AreAnchoredAtTheirRarestBytes) {
  const auto needles = MakeByteNeedles({"Zyzzogeton_qx"s});
  ASSERT_EQ(needles.size(), 1u);
  const ByteForm& form = needles[0].forms[0];
  EXPECT_EQ(form.bytes[form.rareAt], 'Z');
  EXPECT_LT(CommonnessOfByte(static_cast<uint8_t>(form.bytes[form.secondAt])), CommonnessOfByte('o'));
  EXPECT_NE(form.rareAt, form.secondAt);
}

TEST(ByteKernels, TheBestOneRunsHereAndThePlainOneIsLast) {
  EXPECT_EQ(BestByteKernel(), KernelsHere().front().holds);
  EXPECT_STREQ(ByteKernels().back().name, "plain");
}

}  // namespace
}  // namespace quilmark
