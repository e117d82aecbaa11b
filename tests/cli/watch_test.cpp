#include "cli/watch.h"

#include <gtest/gtest.h>

namespace quilmark {
namespace {

TEST(FormatChange, FoldersEndWithABackslashAndNamesAreUtf8) {
  const VolumeChange change{VolumeChange::kMoved, true, u"N:\\b\\文件", u"N:\\a\\文件"};
  EXPECT_EQ(FormatChange(change, false, ""), "moved    N:\\a\\文件\\ -> N:\\b\\文件\\");
  EXPECT_EQ(FormatChange(change, true, "now"),
            R"({"event":"moved","path":"N:\\b\\文件","from":"N:\\a\\文件","dir":true,"time":"now"})");
}

TEST(FormatChange, OnlyAMoveNamesWhereTheFileWas) {
  const VolumeChange change{VolumeChange::kDeleted, false, u"N:\\b.txt", u""};
  EXPECT_EQ(FormatChange(change, false, ""), "deleted  N:\\b.txt");
  EXPECT_EQ(FormatChange(change, true, "now"),
            R"({"event":"deleted","path":"N:\\b.txt","dir":false,"time":"now"})");
}

}  // namespace
}  // namespace quilmark
