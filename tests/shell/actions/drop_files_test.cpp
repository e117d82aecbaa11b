#include "shell/actions/drop_files.h"

#include <gtest/gtest.h>

#include "platform/bytes.h"

namespace quilmark {
namespace {

using Paths = std::vector<std::u16string>;

// As whoever pastes reads it.
Paths ReadBack(const std::vector<std::byte>& block) {
  Paths paths;
  const std::span<const std::byte> bytes(block);
  size_t at = LoadLe<uint32_t>(bytes, 0);
  for (std::u16string path;; at += 2) {
    const auto unit = static_cast<char16_t>(LoadLe<uint16_t>(bytes, at));
    if (unit != 0) {
      path.push_back(unit);
      continue;
    }
    if (path.empty()) break;
    paths.push_back(std::move(path));
    path.clear();
  }
  EXPECT_EQ(at + 2, block.size()) << "nothing stands behind the last NUL";
  return paths;
}

TEST(DropFilesBlock, HasAHeaderOfTwentyBytes) {
  const auto block = DropFilesBlock({u"C:\\a"});
  const std::span<const std::byte> bytes(block);
  ASSERT_EQ(block.size(), 20u + 2 * (4 + 1 + 1));
  EXPECT_EQ(LoadLe<uint32_t>(bytes, 0), 20u) << "where the list begins";
  EXPECT_EQ(LoadLe<uint64_t>(bytes, 4), 0u) << "no point";
  EXPECT_EQ(LoadLe<uint32_t>(bytes, 12), 0u);
  EXPECT_EQ(LoadLe<uint32_t>(bytes, 16), 1u) << "in UTF-16";
}

TEST(DropFilesBlock, HoldsThePathsInTheirOrder) {
  const Paths paths = {u"C:\\b", u"D:\\\u0416\u65b0\U0001F600", std::u16string(40'000, u'x'), u"C:\\a"};
  EXPECT_EQ(ReadBack(DropFilesBlock(paths)), paths);
}

TEST(DropFilesBlock, LeavesOutWhatWouldBreakTheList) {
  const std::u16string withNul(u"C:\\a\0b", 6);
  EXPECT_EQ(ReadBack(DropFilesBlock({u"", u"C:\\a", withNul, u"C:\\b"})), (Paths{u"C:\\a", u"C:\\b"}));
}

TEST(DropFilesBlock, IsEmptyWithoutAPath) {
  EXPECT_TRUE(DropFilesBlock({}).empty());
  EXPECT_TRUE(DropFilesBlock({u"", std::u16string(1, u'\0')}).empty());
}

}  // namespace
}  // namespace quilmark
