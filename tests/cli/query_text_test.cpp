#include "cli/query_text.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "platform/drives.h"
#include "platform/utf.h"
#include "search/query/query.h"
#include "support/scratch_folder.h"

namespace quilmark {
namespace {

namespace fs = std::filesystem;

TEST(QueryText, BackslashesAreTheQueryLanguages) {
  EXPECT_EQ(QueryTextOf("a\\ and b"), u"a\\ and b");
  EXPECT_EQ(QueryTextOf("  trimmed \t"), u"trimmed");
}

TEST(QueryText, ContentQueryIsToldByItsPrefixAndItsTerms) {
  EXPECT_TRUE(IsContentQuery("s:word"));
  EXPECT_TRUE(IsContentQuery(" s:word|txt"));
  for (const char* const text : {"s:", "S:word", "word s:x", "s:|txt", ""}) {
    EXPECT_FALSE(IsContentQuery(text)) << text;
  }
}

TEST(QueryText, FolderByTheHostsPathIsTheOneOnItsDrive) {
  const ScratchFolder root;
  fs::create_directories(root.HostPath() / "sub");
  MapDrive(u'Q', root.Path());
  EXPECT_EQ(IsExistingFolderQuery(QueryTextOf((root.HostPath() / "sub").string())), u"Q:\\sub");
  EXPECT_EQ(QueryTextOf("Q:\\sub"), u"Q:\\sub");
  UnmapDrive(u'Q');
}

TEST(QueryText, RelativePathOfAFolderIsText) {
  const ScratchFolder root;
  fs::create_directories(root.HostPath() / "docs");
  const fs::path before = fs::current_path();
  fs::current_path(root.HostPath());
  for (const char* const typed : {"docs", ".", "..", "\"docs\"", "docs and docs"}) {
    const std::u16string text = QueryTextOf(typed);
    EXPECT_FALSE(IsExistingFolderQuery(text)) << typed;
    EXPECT_EQ(ParseQueryGroups(text), ParseQueryGroups(FromUtf8(typed))) << typed;
  }
  fs::current_path(before);
}

}  // namespace
}  // namespace quilmark
