#include "content/match/content_group.h"

#include <gtest/gtest.h>

namespace quilmark {
namespace {

TEST(ContentGroups, KeepTheOrderOfTheQuery) {
  const auto groups = MakeContentGroups({{u"b", u"a"}, {u"C"}});
  ASSERT_EQ(groups.size(), 2u);
  EXPECT_EQ(groups[0].WideTerms, (std::vector<std::u16string>{u"b", u"a"}));
  EXPECT_EQ(groups[1].WideTerms, std::vector<std::u16string>{u"C"});
}

}  // namespace
}  // namespace quilmark
