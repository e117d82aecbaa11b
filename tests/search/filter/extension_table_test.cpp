#include "search/filter/extension_table.h"

#include <gtest/gtest.h>

#include <vector>

namespace quilmark {
namespace {

const std::vector<FilterCategory> kCategories = {
    {u"All", {}},
    {u"Texts", {u".txt", u".md", u".longer-than-four"}},
    {u"Both", {u".md", u".c"}},
    {u"No dot", {u"txt", u""}},
};

using Positions = std::vector<uint32_t>;

class ExtensionTableOf : public testing::Test {
 protected:
  Positions Of(std::u16string_view foldedName) const {
    const uint32_t id = ExtensionIdOf(table, foldedName);
    return id == table.None() ? Positions() : table.categoriesById[id];
  }
  ExtensionTable table = MakeExtensionTable(kCategories);
};

TEST_F(ExtensionTableOf, NamesTheCategoriesOfAnExtension) {
  EXPECT_EQ(Of(u"a.txt"), (Positions{1}));
  EXPECT_EQ(Of(u"a.md"), (Positions{1, 2}));
  EXPECT_EQ(Of(u"a.c"), (Positions{2}));
  EXPECT_EQ(Of(u"a.longer-than-four"), (Positions{1}));
}

TEST_F(ExtensionTableOf, BeginsAtTheLastDot) {
  EXPECT_EQ(Of(u"a.txt.md"), (Positions{1, 2}));
  EXPECT_EQ(Of(u".md"), (Positions{1, 2}));
  EXPECT_EQ(Of(u"a.md."), Positions());
}

TEST_F(ExtensionTableOf, HasNoneForOtherNames) {
  for (const char16_t* const name :
       {u"", u"a", u"txt", u"a.tx", u"a.txtx", u"a.longer-than-fou", u"a.longer-than-fours"}) {
    EXPECT_EQ(ExtensionIdOf(table, name), table.None()) << testing::PrintToString(std::u16string(name));
  }
  const ExtensionTable empty = MakeExtensionTable({});
  EXPECT_EQ(ExtensionIdOf(empty, u"a.txt"), empty.None());
}

}  // namespace
}  // namespace quilmark
