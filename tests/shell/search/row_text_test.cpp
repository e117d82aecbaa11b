#include "shell/search/row_text.h"

#include <gtest/gtest.h>

#include "support/volumes.h"

namespace quilmark {
namespace {

TEST(RowText, NamesTheFileAndItsFolder) {
  const auto volume = MakeTestVolume(u"Q:");
  const uint32_t folder = AddFolder(*volume, u"docs", kRootFrnOfTests, 77);
  const uint32_t deep = AddFile(*volume, u"a.txt", 77);
  EXPECT_EQ(TextOfRow({volume.get(), deep}).name, u"a.txt");
  EXPECT_EQ(TextOfRow({volume.get(), deep}).folder, u"Q:\\docs");
  EXPECT_EQ(TextOfRow({volume.get(), folder}).name, u"docs");
  EXPECT_EQ(TextOfRow({volume.get(), folder}).folder, u"Q:\\");
}

TEST(RowText, TellsFoldersFromFiles) {
  const auto volume = MakeTestVolume(u"Q:");
  const uint32_t folder = AddFolder(*volume, u"docs");
  const uint32_t file = AddFile(*volume, u"a.txt");
  EXPECT_TRUE(TextOfRow({volume.get(), folder}).isDirectory);
  EXPECT_FALSE(TextOfRow({volume.get(), file}).isDirectory);
}

TEST(RowText, TellsOfARecordThatWasDeleted) {
  const auto volume = MakeTestVolume(u"Q:");
  const uint32_t file = AddFile(*volume, u"a.txt");
  EXPECT_FALSE(TextOfRow({volume.get(), file}).isDeleted);
  MarkDeleted(*volume, file);
  EXPECT_TRUE(TextOfRow({volume.get(), file}).isDeleted);
}

TEST(RowText, SaysNothingOfARecordThatIsGone) {
  const auto volume = MakeTestVolume(u"Q:");
  EXPECT_EQ(TextOfRow({volume.get(), 1'000}), RowText{});
  EXPECT_EQ(TextOfRow({}), RowText{});
}

TEST(RowText, JoinsFolderAndName) {
  EXPECT_EQ(PathOfRow({.name = u"a.txt", .folder = u"Q:\\docs"}), u"Q:\\docs\\a.txt");
  EXPECT_EQ(PathOfRow({.name = u"docs", .folder = u"Q:\\"}), u"Q:\\docs");
  EXPECT_EQ(PathOfRow({}), u"");
}

}  // namespace
}  // namespace quilmark
