#include "shell/actions/shell_paths.h"

#include <gtest/gtest.h>

#include <random>

namespace quilmark {
namespace {

TEST(QuotePathForShell, LeavesAloneWhatIsOneArgument) {
  for (const std::u16string path : {u"", u"C:\\dir\\a.txt", u"C:\\dir\\", u"a'b&c^d"}) {
    EXPECT_EQ(QuotePathForShell(path), path);
  }
}

TEST(QuotePathForShell, PutsTheOthersInQuotationMarks) {
  const struct {
    std::u16string path, quoted;
  } cases[] = {
      {u"C:\\my dir\\a.txt", u"\"C:\\my dir\\a.txt\""},
      {u"a\tb", u"\"a\tb\""},
      {u"C:\\my dir\\", u"\"C:\\my dir\\\\\""},
      {u"a b\\\\", u"\"a b\\\\\\\\\""},
      {u"a\"b", u"\"a\\\"b\""},
      {u"a\\\"b", u"\"a\\\\\\\"b\""},
      {u"\"", u"\"\\\"\""},
      {u" ", u"\" \""},
  };
  for (const auto& [path, quoted] : cases) EXPECT_EQ(QuotePathForShell(path), quoted);
}

// The usual splitting of a command line, for one argument: backslashes are themselves but in front of a
// quotation mark.
std::u16string Split(std::u16string_view line) {
  std::u16string argument;
  bool isQuoted = false;
  for (size_t i = 0; i < line.size();) {
    size_t backslashes = 0;
    while (i + backslashes < line.size() && line[i + backslashes] == u'\\') ++backslashes;
    i += backslashes;
    if (i < line.size() && line[i] == u'"') {
      argument.append(backslashes / 2, u'\\');
      if (backslashes % 2 == 1) {
        argument.push_back(u'"');
      } else {
        isQuoted = !isQuoted;
      }
      ++i;
      continue;
    }
    argument.append(backslashes, u'\\');
    if (i == line.size()) break;
    EXPECT_TRUE(isQuoted || (line[i] != u' ' && line[i] != u'\t')) << "a second argument begins";
    argument.push_back(line[i++]);
  }
  return argument;
}

TEST(QuotePathForShell, IsSplitIntoThePathAgain) {
  std::mt19937 random(6);
  for (int i = 0; i < 20'000; ++i) {
    std::u16string path;
    for (size_t size = random() % 12; size > 0; --size) path.push_back(u"a\\\" \t:"[random() % 6]);
    EXPECT_EQ(Split(QuotePathForShell(path)), path);
  }
}

TEST(SelectArguments, QuoteThePath) {
  EXPECT_EQ(SelectArguments(u"C:\\my dir\\a,b.txt"), u"/select,\"C:\\my dir\\a,b.txt\"");
}

TEST(ParentOfPath, IsTheFolderThatHoldsIt) {
  EXPECT_EQ(ParentOfPath(u"C:\\dir\\sub\\a.txt"), u"C:\\dir\\sub");
  EXPECT_EQ(ParentOfPath(u"C:\\a.txt"), u"C:\\");
  for (const auto* path : {u"C:\\", u"C:", u"", u"a.txt", u"C:\\dir\\"}) {
    EXPECT_FALSE(ParentOfPath(path).has_value());
  }
}

TEST(SiblingsOfFirst, AreThoseOfItsFolderWhateverTheCase) {
  using Paths = std::vector<std::u16string>;
  EXPECT_EQ(
      SiblingsOfFirst({u"C:\\Dir\\a", u"C:\\other\\b", u"c:\\dIR\\c", u"C:\\Dir\\sub\\d", u"C:\\e"}),
      (Paths{u"C:\\Dir\\a", u"c:\\dIR\\c"}));
  EXPECT_EQ(SiblingsOfFirst({u"C:\\a", u"c:\\b", u"D:\\c"}), (Paths{u"C:\\a", u"c:\\b"}));
  EXPECT_EQ(SiblingsOfFirst({u"C:\\"}), Paths{u"C:\\"});
  EXPECT_EQ(SiblingsOfFirst({u"C:\\", u"D:\\"}), Paths{u"C:\\"}) << "what has no folder has no siblings";
  EXPECT_EQ(SiblingsOfFirst({}), Paths{});
}

TEST(IsBelow, IsTrueAtAnyDepth) {
  EXPECT_TRUE(IsBelow(u"c:\\dir\\a", u"c:\\dir"));
  EXPECT_TRUE(IsBelow(u"c:\\dir\\sub\\a", u"c:\\dir"));
  EXPECT_FALSE(IsBelow(u"c:\\dir", u"c:\\dir"));
  EXPECT_FALSE(IsBelow(u"c:\\dirs\\a", u"c:\\dir"));
  EXPECT_FALSE(IsBelow(u"c:", u"c:\\dir"));
}

TEST(IsDeletablePath, IsThatOfOneFileBelowARoot) {
  for (const auto* path : {u"C:\\a", u"z:\\dir\\a.txt", u"C:\\dir\\a.", u"C:\\dir\\a*", u"C:\\...\\ "}) {
    EXPECT_TRUE(IsDeletablePath(path)) << std::u16string_view(path).size();
  }
}

// Each of them would be taken for something else.
TEST(IsDeletablePath, IsNoRootNoStreamAndNoWayUp) {
  for (const std::u16string path :
       {u"", u"C:", u"C:\\", u"C:\\.", u"C:\\..", u"C:\\dir\\..", u"C:\\..\\a", u"C:\\dir\\", u"C:\\\\a",
        u"a.txt", u"\\dir\\a", u"\\\\?\\C:\\a", u"C:\\dir\\a:b", u"C:\\a/b", u"1:\\a", u"C:a"}) {
    EXPECT_FALSE(IsDeletablePath(path));
  }
  EXPECT_FALSE(IsDeletablePath(std::u16string(u"C:\\dir\0\\a", 9))) << "cut at the NUL it is the folder";
}

TEST(IsPlainPath, HoldsNothingThatOldCallsChange) {
  for (const auto* path : {u"C:\\a", u"C:\\.a\\b.c", u"C:\\a b\\c", u"C:\\[a]{b}&c"}) {
    EXPECT_TRUE(IsPlainPath(path));
  }
  for (const auto* path : {u"C:\\a*", u"C:\\?", u"C:\\a<", u"C:\\a>b", u"C:\\\"", u"C:\\a|b", u"C:\\a.",
                           u"C:\\a ", u"C:\\dir.\\a", u"C:\\dir \\a", u"C:\\a*\\b"}) {
    EXPECT_FALSE(IsPlainPath(path));
  }
}

TEST(IsShellPath, NamesOneFileToTheShell) {
  for (const auto* path : {u"C:\\", u"Q:\\.", u"C:\\a", u"C:\\a b\\c.txt"})
    EXPECT_TRUE(IsShellPath(path));
  for (const auto* path : {u"", u"C:", u"C:\\dot.", u"C:\\blank ", u"C:\\dir.\\a", u"C:\\a*", u"C:\\a:b",
                           u"C:\\a\\..\\b", u"\\\\server\\share\\a"}) {
    EXPECT_FALSE(IsShellPath(path));
  }
}

}  // namespace
}  // namespace quilmark
