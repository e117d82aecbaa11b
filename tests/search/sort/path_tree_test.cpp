#include "search/sort/path_tree.h"

#include <gtest/gtest.h>

#include "support/volumes.h"

namespace quilmark {
namespace {

TEST(PathTree, HasOneNodeForAllPathsThatAgreeButForCase) {
  const auto volume = MakeTestVolume(u"Q:"), sameDrive = MakeTestVolume(u"q:");
  AddFolder(*volume, u"Docs", kRootFrnOfTests, 101);
  AddFolder(*volume, u"docs", kRootFrnOfTests, 102);
  AddFolder(*volume, u"other", kRootFrnOfTests, 103);
  AddFolder(*sameDrive, u"DOCS", kRootFrnOfTests, 101);
  PathTree tree;
  const auto node = FindPathNode(tree, *volume, 101);
  ASSERT_TRUE(node);
  EXPECT_EQ(FindPathNode(tree, *volume, 101), node);
  EXPECT_EQ(FindPathNode(tree, *volume, 102), node);
  EXPECT_EQ(FindPathNode(tree, *sameDrive, 101), node);
  const auto other = FindPathNode(tree, *volume, 103);
  ASSERT_TRUE(other);
  EXPECT_NE(other, node);
  EXPECT_EQ(tree.nodes[*other].parent, tree.nodes[*node].parent);
}

TEST(PathTree, FollowsParentsToTheDrive) {
  const auto volume = MakeTestVolume(u"Q:");
  AddFolder(*volume, u"a", kRootFrnOfTests, 101);
  AddFolder(*volume, u"b", 101, 102);
  PathTree tree;
  const auto inner = FindPathNode(tree, *volume, 102);
  ASSERT_TRUE(inner);
  const uint32_t outer = tree.nodes[*inner].parent;
  EXPECT_EQ(FindPathNode(tree, *volume, 101), outer);
  EXPECT_EQ(tree.nodes[*inner].depth, tree.nodes[outer].depth + 1);
}

TEST(PathTree, IsNoneWhereFoldersStandInACircleOrLookLikeSeveral) {
  const auto volume = MakeTestVolume(u"Q:");
  AddFolder(*volume, u"a", 102, 101);
  AddFolder(*volume, u"b", 101, 102);
  AddFolder(*volume, u"c\\d", kRootFrnOfTests, 103);
  PathTree tree;
  EXPECT_FALSE(FindPathNode(tree, *volume, 101));
  EXPECT_FALSE(FindPathNode(tree, *volume, 103));
  EXPECT_TRUE(HasBackslash(u"c\\d"));
  EXPECT_FALSE(HasBackslash(u"c/d"));
}

}  // namespace
}  // namespace quilmark
