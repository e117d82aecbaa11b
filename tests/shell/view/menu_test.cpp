#include "shell/view/menu.h"

#include <gtest/gtest.h>

namespace quilmark {
namespace {

TEST(MenuLabel, ShowsAnAmpersandAsItStands) {
  EXPECT_EQ(MenuLabel(u"Cut & Copy\tCtrl+X"), u"Cut && Copy\tCtrl+X");
  EXPECT_EQ(MenuLabel(u"&&"), u"&&&&");
  EXPECT_EQ(MenuLabel(u""), u"");
}

}  // namespace
}  // namespace quilmark
