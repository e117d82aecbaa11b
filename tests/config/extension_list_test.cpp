#include "config/extension_list.h"

#include <gtest/gtest.h>

namespace quilmark {
namespace {

using Extensions = std::vector<std::u16string>;

TEST(ParseExtensionList, FoldsTrimsAndPutsADotInFront) {
  EXPECT_EQ(ParseExtensionList(u"TXT, .md,,log"), (Extensions{u".txt", u".md", u".log"}));
  EXPECT_EQ(ParseExtensionList(u"\t.\u00C4B \r\n"), Extensions{u".\u00E4b"});
}

TEST(ParseExtensionList, DropsEmptyPieces) {
  EXPECT_EQ(ParseExtensionList(u""), Extensions{});
  EXPECT_EQ(ParseExtensionList(u" , ,\t"), Extensions{});
  EXPECT_EQ(ParseExtensionList(u"a,"), Extensions{u".a"});
}

TEST(ParseExtensionList, KeepsOrderAndRepetition) {
  EXPECT_EQ(ParseExtensionList(u"b,a,.B"), (Extensions{u".b", u".a", u".b"}));
}

TEST(JoinExtensionList, PutsCommasBetween) {
  EXPECT_EQ(JoinExtensionList({u".txt", u".md"}), u".txt,.md");
  EXPECT_EQ(JoinExtensionList({}), u"");
}

}  // namespace
}  // namespace quilmark
