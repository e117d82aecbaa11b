#include "shell/row_text.h"

#include <gtest/gtest.h>

#include "shell/scope_items.h"
#include "support/search_harness.h"
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

TEST(RowText, GivesWhatIsLeftOfARecordThatIsGone) {
  const auto volume = MakeTestVolume(u"Q:");
  EXPECT_EQ(TextOfRow({volume.get(), 1'000}).name, u"Q:");
  EXPECT_EQ(TextOfRow({volume.get(), 1'000}).folder, u"");
  EXPECT_EQ(TextOfRow({}).name, u"");
}

TEST(ScopeItems, AreAllTheDesktopAndEachVolume) {
  SearchHarness harness;
  AddVolume(Engine(), MakeTestVolume(u"Q:"));
  AddVolume(Engine(), MakeTestVolume(u"D:"));
  EXPECT_EQ(ScopeItems(Engine()), (std::vector<std::u16string>{u"All", u"Desktop", u"D:", u"Q:"}));
}

}  // namespace
}  // namespace quilmark
